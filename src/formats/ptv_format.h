// Value file (.ptv): one point per line, fixed columns.
//
//  1-2 theme   3-6 commune   7-10 plan   11-22 point number   23-24 nature
//  25 PFP3 sheet   26 "R"   28-29 value code (27-31 read " vv. ")
//  33-43 Y   45-55 X   57-64 altitude   65-72 blank   73-84 comment
//  86-87 type
#pragma once

#include <string>
#include <string_view>

#include "io/journal.h"
#include "formats/target_line.h"
#include "model/point.h"

namespace quillon {

bool LireLignePtVal(std::string_view ligne, Point& point, Journal& journal);

// With `valeurConnue` the point's own value code is written (DC source);
// without it, the code is looked up from the theme, PrecPlan and FiabPlan
// (precision source). A failed lookup still writes the line, with the
// fallback code (or two blanks when the theme has no table), after copying
// the source line to the log; a failed field rejects the line.
bool EcrireLignePtVal(std::string_view ligneSource, bool valeurConnue, const Point& point, LigneCible& cible,
                      Journal& journal);

}  // namespace quillon
