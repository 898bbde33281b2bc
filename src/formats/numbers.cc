#include "formats/numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "formats/target_line.h"

namespace quillon {

// Every build computes doubles as doubles, as the 64-bit programs do. In a
// wider format (the x87 unit of 32-bit x86, without SSE2 arithmetic) a
// result is rounded twice or kept wider than a double: a text read one unit
// in the last place away, a tenth of the value tables that is not the
// double read from a file.
static_assert(FLT_EVAL_METHOD == 0, "doubles must be evaluated as doubles: -msse2 -mfpmath=sse on 32-bit x86");

namespace {

// A number read in one pass by the grammar of the files.
struct Nombre {
  bool negatif = false;
  const char* debut = nullptr;  // the first digit or the point, after the sign
  const char* fin = nullptr;    // after the last digit
  uint64_t mantisse = 0;        // all the digits as one integer, exact up to 19 digits
  int entiers = 0;              // digits before the point
  int decimales = 0;            // digits after it

  int Chiffres() const { return entiers + decimales; }
};

bool EstChiffre(char c) { return static_cast<unsigned>(c - '0') <= 9; }

// One more digit of the mantissa. With kMantisse false, Analyser checks the
// form alone and adds up nothing: the point number's check, whose mantissa
// nobody reads, is not left to the compiler to see so (some builds kept
// adding it up on every line).
template <bool kMantisse>
void AjouterChiffre(uint64_t& mantisse, char c) {
  if constexpr (kMantisse) mantisse = mantisse * 10 + static_cast<unsigned>(c - '0');
}

template <bool kMantisse = true>
bool Analyser(std::string_view texte, Nombre& n) {
  // Locals, not the fields of `n`: bytes may alias anything, and the loop
  // would otherwise store the mantissa at every digit.
  const char* p = texte.data();
  const char* fin = p + texte.size();
  while (p < fin && *p == ' ') ++p;
  bool negatif = false;
  if (p < fin && (*p == '+' || *p == '-')) {
    negatif = *p == '-';
    ++p;
  }
  const char* debut = p;
  uint64_t mantisse = 0;
  for (; p < fin && EstChiffre(*p); ++p) AjouterChiffre<kMantisse>(mantisse, *p);
  const int entiers = static_cast<int>(p - debut);
  int decimales = 0;
  if (p < fin && *p == '.') {
    const char* point = p;
    for (++p; p < fin && EstChiffre(*p); ++p) AjouterChiffre<kMantisse>(mantisse, *p);
    decimales = static_cast<int>(p - point - 1);
  }
  n.negatif = negatif;
  n.debut = debut;
  n.fin = p;
  n.mantisse = mantisse;
  n.entiers = entiers;
  n.decimales = decimales;
  while (p < fin && *p == ' ') ++p;
  return p == fin && entiers + decimales > 0;
}

}  // namespace

std::string_view Rogner(std::string_view texte) {
  std::size_t debut = 0;
  std::size_t fin = texte.size();
  while (debut < fin && texte[debut] == ' ') ++debut;
  while (fin > debut && texte[fin - 1] == ' ') --fin;
  return texte.substr(debut, fin - debut);
}

bool EstNumerique(std::string_view texte) {
  Nombre n;
  return Analyser<false>(texte, n);
}

namespace {

// Powers of ten that a double holds exactly.
constexpr double kPuissancesDix[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                     1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// 2^52: below it, an integer n is the low bits of the double 2^52 + n.
constexpr double kDeuxPuissance52 = 0x1p52;

// The digits as an exact integer divided by an exact power of ten: one
// correctly rounded division, so the double nearest to the text. Holds for
// up to 15 digits, which every column of the files fits; longer numbers go
// through the general conversion. The integer, below 2^50, becomes a double
// through its bits: exact, and done by SSE2 on 32-bit x86 as well, which
// converts no 64-bit integer itself.
bool ConversionRapide(const Nombre& n, double& v) {
  if (n.Chiffres() > 15) return false;
  const double entier = std::bit_cast<double>(std::bit_cast<uint64_t>(kDeuxPuissance52) | n.mantisse);
  v = (entier - kDeuxPuissance52) / kPuissancesDix[n.decimales];
  return true;
}

}  // namespace

bool ConvertirDecimal(std::string_view texte, double& valeur) {
  Nombre n;
  if (!Analyser(texte, n)) return false;
  double v = 0;
  if (!ConversionRapide(n, v)) {
    const auto r = std::from_chars(n.debut, n.fin, v, std::chars_format::fixed);
    if (r.ec != std::errc() || r.ptr != n.fin) return false;
  }
  valeur = n.negatif ? -v : v;
  return true;
}

bool ConvertirEntier(std::string_view texte, int16_t& valeur) {
  Nombre n;
  if (!Analyser(texte, n)) return false;
  int64_t entier = 0;  // 64 bits on every platform: long is 32 on Windows
  if (n.decimales == 0 && n.entiers <= 18) {
    entier = static_cast<int64_t>(n.mantisse);  // the usual whole number, read once already
  } else {
    for (const char* c = n.debut; c < n.debut + n.entiers; ++c) {
      entier = entier * 10 + (*c - '0');
      if (entier > 100000) return false;  // far outside the range already
    }
  }
  // Round on the decimal text: above a half up, a half exactly to even.
  if (n.decimales > 0) {
    const char* decimales = n.debut + n.entiers + 1;
    const int premiere = decimales[0] - '0';
    const bool resteNonNul = std::any_of(decimales + 1, n.fin, [](char c) { return c != '0'; });
    if (premiere > 5 || (premiere == 5 && (resteNonNul || entier % 2 == 1))) ++entier;
  }
  if (n.negatif) entier = -entier;
  if (entier < -32768 || entier > 32767) return false;
  valeur = static_cast<int16_t>(entier);
  return true;
}

namespace {

// "00", "01" ... "99": the digits of a number are written two at a time,
// which halves the chain of divisions.
constexpr auto kPaires = [] {
  std::array<char, 200> paires{};
  for (int i = 0; i < 100; ++i) {
    paires[2 * i] = static_cast<char>('0' + i / 10);
    paires[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return paires;
}();

// Writes the digits of `n` (none for 0) backwards, ending at `fin` and not
// before `debut`; returns the first, or null when they do not fit.
char* ChiffresAReculons(uint64_t n, char* debut, char* fin) {
  char* p = fin;
  for (; n >= 10; n /= 100) {
    if (p - debut < 2) return nullptr;
    p -= 2;
    std::memcpy(p, &kPaires[2 * (n % 100)], 2);
  }
  if (n > 0) {
    if (p == debut) return nullptr;
    *--p = static_cast<char>('0' + n);
  }
  return p;
}

uint64_t ValeurAbsolue(int64_t n) {
  return n < 0 ? 0 - static_cast<uint64_t>(n) : static_cast<uint64_t>(n);
}

char* Fin(TamponNombre& tampon) { return tampon.octets + sizeof tampon.octets; }

std::string_view Vue(const char* debut, const char* fin) {
  return {debut, static_cast<std::size_t>(fin - debut)};
}

// Fills the field with blanks: a number that cannot be written in it.
bool Blanchir(char* zone, std::size_t largeur) {
  std::memset(zone, ' ', largeur);
  return false;
}

// Blanks before `debut`, the first byte of a text written from the end of
// the field backwards.
bool Aligner(char* zone, const char* debut) {
  std::memset(zone, ' ', static_cast<std::size_t>(debut - zone));
  return true;
}

}  // namespace

bool PlacerEntierDiese(int64_t n, char* zone, std::size_t largeur) {
  char* p = ChiffresAReculons(ValeurAbsolue(n), zone, zone + largeur);
  if (p == nullptr) return Blanchir(zone, largeur);
  if (n < 0) {
    if (p == zone) return Blanchir(zone, largeur);
    *--p = '-';
  }
  return Aligner(zone, p);
}

std::string_view FormaterEntierZeros(int64_t n, int chiffres, TamponNombre& tampon) {
  char* p = ChiffresAReculons(ValeurAbsolue(n), tampon.octets + 1, Fin(tampon));
  while (Fin(tampon) - p < chiffres && p > tampon.octets + 1) *--p = '0';
  if (n < 0) *--p = '-';
  return Vue(p, Fin(tampon));
}

namespace {

// The number times 10^decimales rounded to an integer, exactly as the
// general formatting rounds it (to nearest, a half to even, on the exact
// value of the double).
//
// The product p is rounded once, by at most half a unit in its last place:
// under 2^-14 while |p| < 2^40. So when p lies farther than 2^-12 from a
// half-integer, rounding p gives the integer nearest to the exact product;
// close to a half this says no, and the general formatting decides.
bool ArrondirRapide(double valeur, int decimales, int64_t& entier) {
  static constexpr double kEchelles[] = {1.0, 10.0, 100.0, 1000.0};
  if (decimales < 1 || decimales > 3) return false;
  const double p = valeur * kEchelles[decimales];
  // Bounds rather than std::fabs, which GCC computes with the x87 unit on
  // 32-bit x86 even for SSE2 arithmetic.
  if (!(p > -0x1p40 && p < 0x1p40)) return false;
  // Adding and taking away 1.5 * 2^52 leaves p rounded to an integer, to
  // nearest and a half to even, in the default rounding mode. The sum's
  // unit in the last place is 1, so the integer is also the difference of
  // its bits and 1.5 * 2^52's: no conversion, which 32-bit x86 would make
  // with the x87 unit.
  constexpr double kArrondi = 0x1.8p52;
  const double somme = p + kArrondi;
  const double arrondi = somme - kArrondi;
  const double ecart = p - arrondi;
  if (ecart > 0.5 - 0x1p-12 || ecart < -(0.5 - 0x1p-12)) return false;
  entier = static_cast<int64_t>(std::bit_cast<uint64_t>(somme) - std::bit_cast<uint64_t>(kArrondi));
  return true;
}

// The "#.000" text of `entier`, the number times 10^decimales, written
// backwards from `fin` and not before `debut`: the decimals, the point, the
// integer part without leading zeros, the sign. Returns its first byte, or
// null when it does not fit.
char* DecimalAReculons(int64_t entier, int decimales, char* debut, char* fin) {
  if (fin - debut < decimales + 1) return nullptr;
  uint64_t reste = ValeurAbsolue(entier);
  char* p = fin;
  for (int k = 0; k < decimales; ++k, reste /= 10) *--p = static_cast<char>('0' + reste % 10);
  *--p = '.';
  p = ChiffresAReculons(reste, debut, p);
  if (p == nullptr) return nullptr;
  if (entier < 0) {  // a number rounding to zero has no sign
    if (p == debut) return nullptr;
    *--p = '-';
  }
  return p;
}

}  // namespace

bool FormaterDecimal(double valeur, int decimales, TamponNombre& tampon, std::string_view& texte) {
  if (!std::isfinite(valeur)) return false;
  int64_t entier;
  if (ArrondirRapide(valeur, decimales, entier)) {
    texte = Vue(DecimalAReculons(entier, decimales, tampon.octets, Fin(tampon)), Fin(tampon));
    return true;
  }
  char* p = tampon.octets;
  const auto r = std::to_chars(p, Fin(tampon), valeur, std::chars_format::fixed, decimales);
  if (r.ec != std::errc()) return false;
  const bool negatif = *p == '-';
  if (negatif) ++p;
  if (r.ptr - p > 1 && p[0] == '0' && p[1] == '.') ++p;  // "0.50" gives ".50"
  const bool zero = std::all_of(p, r.ptr, [](char c) { return c == '0' || c == '.'; });
  if (negatif && !zero) *--p = '-';
  texte = Vue(p, r.ptr);
  return true;
}

bool PlacerDecimal(double valeur, int decimales, char* zone, std::size_t largeur) {
  // The usual case goes straight into the field; the text is not built
  // elsewhere and copied.
  int64_t entier;
  if (std::isfinite(valeur) && ArrondirRapide(valeur, decimales, entier)) {
    const char* debut = DecimalAReculons(entier, decimales, zone, zone + largeur);
    return debut != nullptr ? Aligner(zone, debut) : Blanchir(zone, largeur);
  }
  TamponNombre tampon;
  std::string_view texte;
  if (!FormaterDecimal(valeur, decimales, tampon, texte)) return Blanchir(zone, largeur);
  return PlacerADroite(zone, largeur, texte);
}

}  // namespace quillon
