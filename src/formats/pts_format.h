// DC point file (.pts), read only.
//
//  1-3 commune   4-7 plan   14-17 point number   19-20 nature
//  22-23 value code   25-34 Y   35-44 X   45-52 altitude   69-73 comment
//
// A DC line has no theme: it is derived from the commune, the nature text,
// the value code and the run's theme group.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "io/journal.h"
#include "model/point.h"

namespace quillon {

bool LireLignePtDC(std::string_view ligne, int32_t groupeTheme, Point& point, Journal& journal);

bool LireCommunePtDC(std::string_view ligne, int16_t& commune, Journal& journal);
bool LirePlanPtDC(std::string_view ligne, int16_t& plan, Journal& journal);
bool LireNumeroPointPtDC(std::string_view ligne, std::string& numero, Journal& journal);
// "1" to "5" give 1 to 5, and "6" gives 5; `texteNature` receives the
// trimmed text whatever the result.
bool LireNaturePtDC(std::string_view ligne, int32_t& nature, std::string& texteNature, Journal& journal);
bool LireValeurPtDC(std::string_view ligne, int16_t& valeur, Journal& journal);
// Coordinates must fill their 10 columns ("au millimètre").
bool LireCoordonneeYPtDC(std::string_view ligne, double& y, Journal& journal);
bool LireCoordonneeXPtDC(std::string_view ligne, double& x, Journal& journal);
bool LireAltitudePtDC(std::string_view ligne, double& altitude, Journal& journal);
bool LireCommentairePtDC(std::string_view ligne, std::string& commentaire, Journal& journal);

// Commune 400: theme 1; nature "6": the theme group; otherwise value codes
// ending in 1 or 2 give 1, the others 6.
void DeduireThemePtDC(int16_t valeur, std::string_view texteNature, int16_t commune, int32_t groupeTheme,
                      int32_t& theme);

}  // namespace quillon
