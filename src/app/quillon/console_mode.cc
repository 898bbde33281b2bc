#include "app/quillon/console_mode.h"

#include <string>

#include "app/quillon/command_line.h"
#include "io/console.h"
#include "conversion/conversions.h"

namespace quillon {
namespace {

// Case-blind "contains", for the extension tests.
bool Contient(std::string_view chemin, std::string_view extension) {
  if (extension.size() > chemin.size()) return false;
  for (std::size_t i = 0; i + extension.size() <= chemin.size(); ++i) {
    std::size_t k = 0;
    while (k < extension.size()) {
      char c = chemin[i + k];
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
      if (c != extension[k]) break;
      ++k;
    }
    if (k == extension.size()) return true;
  }
  return false;
}

}  // namespace

// The three numbers written one by one, without leading zeros: 0.5.5.
void AfficherVersion() {
  EcrireConsole(std::string(kTitreApplication) + ", Version " + std::to_string(kVersionMajeure) + "." +
                std::to_string(kVersionMineure) + "." + std::to_string(kVersionRevision) + "\r\n");
}

void ModeConsole(std::string_view texteArguments, ReglagesExecution& reglages) {
  AfficherVersion();

  std::string source, cible;
  int16_t classeEchelle = 0;
  int32_t groupeTheme = 0;
  if (!LireArguments(texteArguments, source, cible, classeEchelle, groupeTheme)) return;

  reglages.DefinirSource(source);
  reglages.FichierCible.Nom = cible;
  reglages.journal.NbErreursLecture = 0;
  reglages.journal.NbErreursEcriture = 0;

  // Three independent tests, in this order; a fatal error ends the program.
  const OptionsConversion options{classeEchelle, groupeTheme};
  if (Contient(cible, ".ptp") && Contient(source, ".ptv")) {
    if (!Convertir(reglages, Conversion::ValEnPrecFiab, options)) return;
  }
  if (Contient(cible, ".ptv") && Contient(source, ".ptp")) {
    if (!Convertir(reglages, Conversion::PrecFiabEnVal, options)) return;
  }
  if (Contient(cible, ".ptm") && Contient(source, ".ptp")) {
    if (!Convertir(reglages, Conversion::PrecFiabEnMD01, options)) return;
  }
}

}  // namespace quillon
