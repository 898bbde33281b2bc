#include "conversion/run_settings.h"

#include "model/value_tables.h"

namespace quillon {

void ReglagesExecution::DefinirSource(const std::string& chemin) {
  FichierSource.Nom = chemin;
  journal.FichierLog.Nom = chemin + ".log";
}

void InitialiserTables(ReglagesExecution& reglages) {
  reglages.FichierSource.Nom.clear();
  reglages.FichierCible.Nom.clear();
  reglages.journal.FichierLog.Nom.clear();
  reglages.journal.LogOuvert = false;
  Tables();
}

}  // namespace quillon
