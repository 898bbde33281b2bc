// One file of a batch through the core's conversion run.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "app/batch/options.h"
#include "app/batch/sources.h"
#include "report/checks.h"

namespace quillon::lot {

enum class Issue {
  Converti,    // completed, no rejected field
  Rejets,      // completed, some fields rejected
  Echec,       // a file could not be opened, created, read or written
  Interrompu,  // stopped halfway: the previous target and log stay
  NonTraite,   // never started: the batch was stopped before
};

// "converti", "rejets", "echec", "interrompu", "non-traite".
const char* MotIssue(Issue issue);

struct ResultatFichier {
  Issue issue = Issue::NonTraite;
  int64_t lues = 0;
  int64_t ignorees = 0;
  int64_t erreursLecture = 0;
  int64_t erreursEcriture = 0;
  std::optional<Echec> echec;  // why it failed
  // With --rapport or --json, for a completed run.
  std::shared_ptr<const Controles> controles;
  bool rapportEcrit = false;  // its check report, with --rapport
  bool exporte = false;        // its exports are written
  int epsg = 0;                // their system, 0 when none could be told
};

// Converts one file as the console would, with the batch's options; in
// check mode the target is never written. Looks at `arret` before each
// line. Shares nothing with the runs of other threads. With --rapport or
// --json it runs the checks too, and with --rapport writes the file's
// check report.
ResultatFichier ConvertirFichier(const FichierLot& fichier, const OptionsLot& options,
                                 const std::atomic<bool>* arret);

}  // namespace quillon::lot
