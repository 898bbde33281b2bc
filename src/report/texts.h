// The texts that every report writes the same way: lengths in metres,
// millimetres on a map, a point's identity and theme. Numbers never depend
// on the locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

// A length in metres with `decimales` decimals, never "-0.000".
std::string TexteMetres(double metres, int decimales);
// The same without the zeros that end its decimals: "2.5", "2".
std::string TexteMetresCourt(double metres, int decimales = 4);

// Metres as whole millimetres, held within +-1e15 mm.
int64_t Millimetres(double metres);

// A theme as the reports name it: its number, "blanc" for a blank theme
// column, "illisible" below 0 (a theme that could not be read).
std::string TexteTheme(int theme);

// theme/commune/plan/number, the number without the blanks around it.
// Windows-1252, as the number is.
std::string TexteIdentite(int theme, int commune, int plan, std::string_view numero);

}  // namespace quillon
