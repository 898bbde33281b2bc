// The exports of one source: its converted points and its rejected lines,
// in any of the formats, beside the run's target. A pass over the source
// through the same line steps as the conversion gives the records; no
// target is written.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

#include "conversion/conversions.h"
#include "export/writers.h"

namespace quillon {

struct DemandeExport {
  std::string source;
  Conversion conversion = Conversion::ValEnPrecFiab;
  OptionsConversion options;
  std::string base;  // the exports' path without its extension
  std::vector<FormatExport> formats;
  int epsg = 0;      // 0: guessed from the extent of the converted points
  const std::atomic<bool>* arret = nullptr;
  SystemeFichiers* systeme = &SystemeFichiersReel();
};

struct BilanExport {
  bool complet = false;
  bool interrompu = false;
  ErreurFatale erreur;  // when neither complete nor stopped
  int epsg = 0;         // the system written; 0 when none could be told
  int64_t points = 0;
  int64_t rejets = 0;
};

// The system of an extent: EPSG:2056 for Y from 2,480,000 to 2,850,000 and
// X from 1,070,000 to 1,300,000, EPSG:21781 for the same less 2,000,000
// and 1,000,000; 0 for anything else, and for no point at all.
int SystemeDeLEmprise(const EnteteExport& entete);

// Writes every export asked for; all of them in place, or none (the
// previous files of those names stay).
BilanExport Exporter(const DemandeExport& demande);

}  // namespace quillon
