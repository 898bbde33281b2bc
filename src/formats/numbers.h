// Numbers in the point files: reading and writing, with a point as decimal
// separator whatever the locale.
//
// A number is: optional spaces, an optional sign ("+" or "-") directly
// before the digits, digits with at most one decimal point (at least one
// digit in all), optional spaces. So "12.", ".5" and " -3 " are numbers;
// "1e5", "1,5", "- 5", "" and "   " are not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillon {

// The numeric test.
bool EstNumerique(std::string_view texte);

// Decimal conversion to the double nearest to the text; false when the text
// is not a number.
bool ConvertirDecimal(std::string_view texte, double& valeur);

// Integer conversion: the number rounded to the nearest integer, a half to
// the even one (exactly, on the decimal text); false when the text is not a
// number or the result lies outside -32768..32767.
bool ConvertirEntier(std::string_view texte, int16_t& valeur);

// Room for the longest number text: the largest double with three decimals
// (309 digits, the point, the decimals, the sign).
struct TamponNombre {
  char octets[320];
};

// The formatters below build their text in `tampon` and return a view of it.
// Pattern "0", "000", "0000": at least `chiffres` digits, zero-padded.
std::string_view FormaterEntierZeros(int64_t n, int chiffres, TamponNombre& tampon);
// Patterns "#.0" (decimales 1) and "#.000" (decimales 3): correctly rounded,
// no digit before the point when the integer part is 0 (".5", ".000"), and no
// sign on a number that rounds to zero. False when the number cannot be
// written (not finite).
bool FormaterDecimal(double valeur, int decimales, TamponNombre& tampon, std::string_view& texte);

// The placers write a number straight into a field of a line: right-aligned
// in the `largeur` bytes at `zone`, blanks on the left. When the number cannot
// be written or is too wide, the field is all blanks and the result false.
// Pattern "#": decimal digits, minus sign when negative, 0 gives blanks.
bool PlacerEntierDiese(int64_t n, char* zone, std::size_t largeur);
// The patterns of FormaterDecimal.
bool PlacerDecimal(double valeur, int decimales, char* zone, std::size_t largeur);

// Removes leading and trailing spaces (only spaces, not tabs).
std::string_view Rogner(std::string_view texte);

// The bytes of a column range (1-based first column, width); the part
// beyond the end of the line is absent, possibly all of it.
inline std::string_view Colonnes(std::string_view ligne, std::size_t premiere, std::size_t largeur) {
  if (premiere == 0 || premiere > ligne.size()) return {};
  const std::size_t reste = ligne.size() - (premiere - 1);
  return {ligne.data() + (premiere - 1), largeur < reste ? largeur : reste};
}

}  // namespace quillon
