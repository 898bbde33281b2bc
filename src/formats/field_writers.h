// Field writers: each appends the fixed-width text of its column range to
// the target line being built, and on failure logs
//   ECRITURE: ligne N: <message>
// counted as a writing error, and returns false. The line writer goes on
// with the other fields and rejects the line at the end.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "conversion/journal.h"

namespace quillon {

// Logs a writing error; returns false.
bool EchecEcriture(Journal& journal, std::string_view message);

bool EcrireThemePtVal(std::string& ligne, int32_t theme, Journal& journal);
// With `substitution` set (blank theme, nature 5 or 6) the theme group is
// written instead of the theme: "02" or "03"; any other group gives two
// blanks, so that the columns keep their places.
bool EcrireThemePtPrecFiab(std::string& ligne, int32_t theme, int32_t groupeTheme, bool substitution,
                           Journal& journal);
bool EcrireThemeMD01(std::string& ligne, int32_t theme, Journal& journal);
bool EcrireCommune(std::string& ligne, int16_t commune, Journal& journal);
bool EcrirePlan(std::string& ligne, int16_t plan, Journal& journal);
bool EcrireCommunePlanMD01(std::string& ligne, int16_t commune, int16_t plan, Journal& journal);
bool EcrireNumeroPoint(std::string& ligne, std::string_view numero, Journal& journal);
bool EcrireNature(std::string& ligne, int32_t nature, Journal& journal);
bool EcrireNatureMD01(std::string& ligne, int32_t nature, Journal& journal);
bool EcrireFichePFP3(std::string& ligne, int32_t fiche, Journal& journal);
bool EcrireFichePFP3MD01(std::string& ligne, int32_t fiche, Journal& journal);
bool EcrireDefiniExactementMD01(std::string& ligne, int32_t theme, int32_t nature, Journal& journal);
bool EcrireAncienneBorneSpecialeMD01(std::string& ligne, int32_t theme, Journal& journal);
bool EcrireCoordonneeY(std::string& ligne, double y, Journal& journal);
bool EcrireCoordonneeX(std::string& ligne, double x, Journal& journal);
// Altitude 0 gives eight blanks.
bool EcrireAltitude(std::string& ligne, double altitude, Journal& journal);

// The four precision texts of an MD01 line; the reliabilities are one digit.
struct TextesPrecFiabMD01 {
  std::string PrecPlan, PrecAlt;
  char FiabPlan = '1', FiabAlt = '1';
};
bool EcrirePrecFiabMD01(TextesPrecFiabMD01& textes, double precPlan, int32_t fiabPlan, double precAlt,
                        int32_t fiabAlt, Journal& journal);

// A number with pattern "#.0" right-aligned in 5; false when longer.
bool AjouterPrecision(std::string& ligne, double precision);

}  // namespace quillon
