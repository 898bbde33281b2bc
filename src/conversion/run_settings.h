// The run settings: the process-wide state that the conversions share. In
// windowed mode it carries the paths and the counters from one run to the
// next.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "io/display.h"
#include "io/file_system.h"
#include "io/journal.h"
#include "io/text_file.h"

namespace quillon {
class ObservateurExecution;
}

namespace quillon {

struct ReglagesExecution {
  FichierTexte FichierSource;
  FichierTexte FichierCible;
  Journal journal;  // FichierLog, LogOuvert and the counters

  // Where summaries and fatal errors are shown, and how files are opened.
  Affichage* affichage = nullptr;
  SystemeFichiers* systeme = &SystemeFichiersReel();

  // When set, a run looks at it before each line: once true, the run gives
  // up its target and log, as a failed run does, but shows nothing, and
  // sets Interrompu.
  const std::atomic<bool>* arret = nullptr;
  bool Interrompu = false;

  // When set, the run hands it every line and every rejected field (the
  // check report). Null: the run costs nothing more.
  ObservateurExecution* observateur = nullptr;

  // Source path, and the log path beside it (source path + ".log").
  void DefinirSource(const std::string& chemin);
};

// Empties the paths, closes the log and builds the value tables.
void InitialiserTables(ReglagesExecution& reglages);

// A run's display for whoever reports the run itself (a batch, a pass that
// only exports): it shows nothing and keeps the fatal error.
class AffichageRetenu : public Affichage {
 public:
  void MontrerBilan(const ComptesBilan&) override {}
  void MontrerErreurFatale(const ErreurFatale& erreur) override { erreur_ = erreur; }
  const ErreurFatale& Erreur() const { return erreur_; }

 private:
  ErreurFatale erreur_;
};

// Another file service whose files written go nowhere: all of them (a pass
// that only exports), or the one named (the target of a check). Reading
// goes through as it is.
class SystemeSansEcriture : public SystemeFichiers {
 public:
  explicit SystemeSansEcriture(SystemeFichiers& reel, std::string seul = {}) : reel_(reel), seul_(std::move(seul)) {}
  std::unique_ptr<SupportFichier> OuvrirLecture(const std::string& nom) override { return reel_.OuvrirLecture(nom); }
  std::unique_ptr<SupportFichier> CreerEcriture(const std::string& nom,
                                                std::span<const SupportFichier* const> proteges) override;

 private:
  SystemeFichiers& reel_;
  std::string seul_;
};

}  // namespace quillon
