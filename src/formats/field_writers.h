// Field writers: each appends the fixed-width text of its column range to
// the target line being built (blanks when it fails, so that the columns
// keep their places), and on failure logs
//   ECRITURE: ligne N: <message>
// counted as a writing error, and returns false. The line writer goes on
// with the other fields and rejects the line at the end.
#pragma once

#include <cstdint>
#include <string_view>

#include "io/journal.h"
#include "formats/target_line.h"
#include "model/point.h"

namespace quillon {

// A writer's message, and the field it is about: what the log is told
// along with a field that cannot be written.
struct MessageChamp {
  ChampPoint champ;
  std::string_view texte;
};

// Logs a writing error; returns false.
bool EchecEcriture(Journal& journal, const MessageChamp& message);

bool EcrireThemePtVal(LigneCible& ligne, int32_t theme, Journal& journal);
// With `substitution` set (blank theme, nature 5 or 6) the theme group is
// written instead of the theme: "02" or "03"; any other group gives two
// blanks, so that the columns keep their places.
bool EcrireThemePtPrecFiab(LigneCible& ligne, int32_t theme, int32_t groupeTheme, bool substitution,
                           Journal& journal);
bool EcrireThemeMD01(LigneCible& ligne, int32_t theme, Journal& journal);
bool EcrireCommune(LigneCible& ligne, int16_t commune, Journal& journal);
bool EcrirePlan(LigneCible& ligne, int16_t plan, Journal& journal);
bool EcrireCommunePlanMD01(LigneCible& ligne, int16_t commune, int16_t plan, Journal& journal);
bool EcrireNumeroPoint(LigneCible& ligne, std::string_view numero, Journal& journal);
bool EcrireNature(LigneCible& ligne, int32_t nature, Journal& journal);
bool EcrireNatureMD01(LigneCible& ligne, int32_t nature, Journal& journal);
bool EcrireFichePFP3(LigneCible& ligne, int32_t fiche, Journal& journal);
bool EcrireFichePFP3MD01(LigneCible& ligne, int32_t fiche, Journal& journal);
bool EcrireDefiniExactementMD01(LigneCible& ligne, int32_t theme, int32_t nature, Journal& journal);
bool EcrireAncienneBorneSpecialeMD01(LigneCible& ligne, int32_t theme, Journal& journal);
bool EcrireCoordonneeY(LigneCible& ligne, double y, Journal& journal);
bool EcrireCoordonneeX(LigneCible& ligne, double x, Journal& journal);
// Altitude 0 gives eight blanks.
bool EcrireAltitude(LigneCible& ligne, double altitude, Journal& journal);

// The four precision and reliability texts of a precision or MD01 line:
// PrecPlan and PrecAlt "#.0" in 5, FiabPlan and FiabAlt one byte; blank
// until a lookup or a writer fills them.
struct TextesPrecFiab {
  TextePrecision PrecPlan;
  char FiabPlan = ' ';
  TextePrecision PrecAlt;
  char FiabAlt = ' ';
};

// The MD01 texts: the reliabilities are one digit, "0" for yes.
bool EcrirePrecFiabMD01(TextesPrecFiab& textes, double precPlan, int32_t fiabPlan, double precAlt,
                        int32_t fiabAlt, Journal& journal);

// A number with pattern "#.0" right-aligned in 5; blank and false when longer.
bool FormaterPrecision(TextePrecision& texte, double precision);

}  // namespace quillon
