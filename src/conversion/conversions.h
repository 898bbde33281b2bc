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
#include <string>
#include <string_view>

#include "conversion/run_settings.h"
#include "formats/target_line.h"
#include "model/point.h"

namespace quillon {

// The four runs, as each front end chooses one: the console by the texts of
// its paths, quillon-lot by the source's extension, the windows by the
// filters picked.
enum class Conversion { ValEnPrecFiab, PrecFiabEnVal, PrecFiabEnMD01, DCEnVal };

// "ptv-ptp", "ptp-ptv", "ptp-ptm", "pts-ptv": the conversion's name in the
// reports.
const char* NomConversion(Conversion conversion);

// What the value lookups need: the plan's scale class and the theme group
// given to blank themes (0: none given).
struct OptionsConversion {
  int16_t classeEchelle = 0;
  int32_t groupeTheme = 0;
};

// The options of a run as a report states them (UTF-8, in the chosen
// language): "échelle 1000, thème CS", only those the conversion uses, and
// ", vérification seule" for a check that writes no target; empty when
// there is none.
std::string TexteOptions(Conversion conversion, const OptionsConversion& options, bool verification = false);

// The one entry point of the front ends: runs `conversion` with the run
// settings as they are, and returns as the run below does.
bool Convertir(ReglagesExecution& reglages, Conversion conversion, const OptionsConversion& options);

// One line through a conversion's reader and writer, without a run: reads
// `ligne` into `point` and builds its target line in `cible`, the messages
// going to `journal`; true when the line converts. The runs above go
// through the same steps; a pass over a source that writes something else
// than the target (the exports) calls them itself, line by line.
using EtapeLigne = bool (*)(std::string_view ligne, Point& point, LigneCible& cible, Journal& journal,
                            const OptionsConversion& options);
EtapeLigne EtapeDe(Conversion conversion);

bool ConvertirPtPrecFiabEnPtVal(ReglagesExecution& reglages);
bool ConvertirPtValEnPtPrecFiab(ReglagesExecution& reglages, int16_t classeEchelle, int32_t groupeTheme);
bool ConvertirPtDCEnPtVal(ReglagesExecution& reglages, int32_t groupeTheme);
bool ConvertirPtPrecFiabEnPtMD01(ReglagesExecution& reglages);

}  // namespace quillon
