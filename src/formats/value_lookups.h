// Value lookups: value code -> precision texts of a precision line, and
// precision -> value code of a value line, through the value tables.
#pragma once

#include <cstdint>

#include "io/journal.h"
#include "formats/field_writers.h"
#include "formats/target_line.h"

namespace quillon {

// Value code to precisions (TextesPrecFiab: the texts of a precision line,
// blank until filled), by the theme's table; false (with its message)
// when the theme is not supported or nothing is defined for the code at the
// scale column (0 below code 59, the scale class from 59 on).
bool EcrirePrecFiabPlan(TextesPrecFiab& textes, int32_t Theme, int16_t Valeur, int16_t Echelle, Journal& journal);
bool EcrirePrecFiabPF(TextesPrecFiab& textes, int16_t Valeur, int16_t Echelle, Journal& journal);
bool EcrirePrecFiabBF(TextesPrecFiab& textes, int16_t Valeur, int16_t Echelle, Journal& journal);
bool EcrirePrecFiabCSOD(TextesPrecFiab& textes, int16_t Valeur, int16_t Echelle, Journal& journal);

// Precision to value code. When no precision of the table matches, the text
// is the table's fallback code ("11" fixed points, "99" otherwise); when the
// reliability disagrees, the code found. Both log their two messages and
// return false; the line is written all the same.
bool EcrireValeur(TexteValeur& texte, int32_t Theme, double PrecPlan, int32_t FiabPlan, Journal& journal);
bool EcrireValeurPF(TexteValeur& texte, double PrecPlan, int32_t FiabPlan, Journal& journal);
bool EcrireValeurBF(TexteValeur& texte, double PrecPlan, int32_t FiabPlan, Journal& journal);
bool EcrireValeurCSOD(TexteValeur& texte, double PrecPlan, int32_t FiabPlan, Journal& journal);

// The value code a point already carries, right-aligned in 2.
bool EcrireValeurConnue(TexteValeur& texte, int16_t Valeur, Journal& journal);

}  // namespace quillon
