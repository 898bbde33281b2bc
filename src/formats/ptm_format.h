// MD01 point file (.ptm), written only: one converted point per line.
//
//  1-2 topic   4-15 identifier KQ0ccc00pppp   17-28 point number
//  30 nature   31 PFP3 sheet   32 defini exactement   33 ancienne borne
//  35-45 Y   47-57 X   59 FiabPlan   60-64 PrecPlan
//  and with an altitude: 66-73 altitude   75 FiabAlt   76-80 PrecAlt
#pragma once

#include <string>
#include <string_view>

#include "io/journal.h"
#include "formats/target_line.h"
#include "model/point.h"

namespace quillon {

bool EcrireLignePtMD01(std::string_view ligneSource, const Point& point, LigneCible& cible, Journal& journal);

}  // namespace quillon
