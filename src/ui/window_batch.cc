#include "ui/window_batch.h"

#include "app/batch/pool.h"
#include "io/file_system.h"
#include "model/value_tables.h"

namespace quillon {

LotFenetre::~LotFenetre() {
  Annuler();
  Attendre();
}

bool LotFenetre::Demarrer(std::vector<lot::FichierLot> fichiers, lot::OptionsLot options, unsigned fils) {
  if (enCours_) return false;
  Attendre();
  arret_ = false;
  enCours_ = true;
  total_ = fichiers.size();
  debut_ = std::chrono::steady_clock::now();
  Tables();  // built before the threads read them
  fil_ = std::thread([this, fichiers = std::move(fichiers), options = std::move(options), fils] {
    GrouperSynchronisationsDossiers();
    lot::SuiviLot suivi;
    suivi.fichierTermine = [this](std::size_t i, const lot::ResultatFichier& r) {
      Evenement e;
      e.sorte = Evenement::Sorte::Fichier;
      e.index = i;
      e.resultat = r;
      Poster(std::move(e));
    };
    suivi.avancement = [this](std::size_t faits, int64_t lignes) {
      Evenement e;
      e.faits = faits;
      e.lignes = lignes;
      Poster(std::move(e));
    };
    lot::ConvertirLot(fichiers, options, fils, arret_, suivi);
    SynchroniserDossiers();
    enCours_ = false;
    Evenement fin;
    fin.sorte = Evenement::Sorte::Fin;
    Poster(std::move(fin));
  });
  return true;
}

void LotFenetre::Attendre() {
  if (fil_.joinable()) fil_.join();
}

void LotFenetre::Poster(Evenement e) {
  bool premier;
  {
    std::lock_guard<std::mutex> garde(verrou_);
    premier = attente_.empty();
    attente_.push_back(std::move(e));
  }
  if (premier && reveiller_) reveiller_();
}

std::vector<LotFenetre::Evenement> LotFenetre::Prendre() {
  std::vector<Evenement> pris;
  std::lock_guard<std::mutex> garde(verrou_);
  pris.swap(attente_);
  return pris;
}

double LotFenetre::Secondes() const {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - debut_).count();
}

}  // namespace quillon
