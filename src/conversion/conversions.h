// The four conversion runs. Each reads its source line by line, converts
// every line its reader accepts and its writer can write, logs the rest, and
// ends with the four-count summary.
//
// Before a call the run settings hold the source, target and log paths. A
// run returns true when it completed; false after a fatal error (a file that
// could not be opened, created, read or written), which it has shown and
// after which the program is to end. Its files are closed either way.
#pragma once

#include <cstdint>

#include "conversion/run_settings.h"

namespace quillon {

bool ConvertirPtPrecFiabEnPtVal(ReglagesExecution& reglages);
bool ConvertirPtValEnPtPrecFiab(ReglagesExecution& reglages, int16_t classeEchelle, int32_t groupeTheme);
bool ConvertirPtDCEnPtVal(ReglagesExecution& reglages, int32_t groupeTheme);
bool ConvertirPtPrecFiabEnPtMD01(ReglagesExecution& reglages);

}  // namespace quillon
