// The run settings: the process-wide state that the conversions share. In
// windowed mode it carries the paths and the counters from one run to the
// next.
#pragma once

#include <atomic>
#include <cstdint>
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

}  // namespace quillon
