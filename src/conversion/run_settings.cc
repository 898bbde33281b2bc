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

namespace {

// A file written for nothing.
class SupportNeant : public SupportFichier {
 public:
  int64_t Lire(char*, std::size_t) override { return 0; }
  bool Ecrire(const char*, std::size_t) override { return true; }
  bool Fermer() override { return true; }
  bool MemeFichier(const SupportFichier& autre) const override { return &autre == this; }
  int64_t LireA(char*, std::size_t, uint64_t) override { return 0; }
  bool EcrireA(const char*, std::size_t, uint64_t) override { return true; }
  int64_t Taille() override { return 0; }
  bool Tronquer(uint64_t) override { return true; }
};

}  // namespace

std::unique_ptr<SupportFichier> SystemeSansEcriture::CreerEcriture(const std::string& nom,
                                                                   std::span<const SupportFichier* const> proteges) {
  if (seul_.empty() || nom == seul_) return std::make_unique<SupportNeant>();
  return reel_.CreerEcriture(nom, proteges);
}

}  // namespace quillon
