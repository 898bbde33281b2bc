// Precision file (.ptp): one point per line, fixed columns.
//
//  1-2 theme   3-6 commune   7-10 plan   11-22 point number   23-24 nature
//  25 PFP3 sheet   26 FiabPlan   27-31 PrecPlan   33-43 Y   45-55 X
//  57-64 altitude   66 FiabAlt   67-71 PrecAlt   73-84 comment   86-87 type
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "io/journal.h"
#include "formats/target_line.h"
#include "model/point.h"

namespace quillon {

// Reads every field, logging each one rejected; a rejected line is then
// copied to the log and the result is false.
bool LireLignePtPrecFiab(std::string_view ligne, Point& point, Journal& journal);

// Builds the precision line of a point read from a value line; the
// precisions come from the value tables by the point's theme and value code
// and the run's scale class. A blank theme of nature 5 or 6 takes the theme
// group. False (line copied to the log) when any column failed.
bool EcrireLignePtPrecFiab(std::string_view ligneSource, const Point& point, int16_t classeEchelle,
                           int32_t groupeTheme, LigneCible& cible, Journal& journal);

}  // namespace quillon
