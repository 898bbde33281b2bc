#include "formats/numbers.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <cstdint>
#include <limits>

namespace quillon {
namespace {

// A number read in one pass by the grammar of the files.
struct Nombre {
  bool negatif = false;
  std::string_view corps;  // digits and point, without sign or spaces
  std::string_view entiers;
  std::string_view decimales;
  uint64_t mantisse = 0;   // all the digits as one integer, exact up to 19 digits
  int chiffres = 0;        // how many digits in all
};

bool Analyser(std::string_view texte, Nombre& n) {
  // Locals, not the fields of `n`: bytes may alias anything, and the loop
  // would otherwise store the mantissa at every digit.
  const char* p = texte.data();
  const char* fin = p + texte.size();
  while (p < fin && *p == ' ') ++p;
  while (fin > p && fin[-1] == ' ') --fin;
  bool negatif = false;
  if (p < fin && (*p == '+' || *p == '-')) {
    negatif = *p == '-';
    ++p;
  }
  const char* debut = p;
  uint64_t mantisse = 0;
  for (; p < fin && static_cast<unsigned>(*p - '0') <= 9; ++p) mantisse = mantisse * 10 + static_cast<unsigned>(*p - '0');
  const char* point = p;
  const char* finDecimales = p;
  if (p < fin && *p == '.') {
    for (++p; p < fin && static_cast<unsigned>(*p - '0') <= 9; ++p) {
      mantisse = mantisse * 10 + static_cast<unsigned>(*p - '0');
    }
    finDecimales = p;
  }
  n.negatif = negatif;
  n.mantisse = mantisse;
  n.entiers = std::string_view(debut, static_cast<std::size_t>(point - debut));
  n.decimales = point < finDecimales ? std::string_view(point + 1, static_cast<std::size_t>(finDecimales - point - 1))
                                     : std::string_view();
  n.corps = std::string_view(debut, static_cast<std::size_t>(fin - debut));
  n.chiffres = static_cast<int>(n.entiers.size() + n.decimales.size());
  return p == fin && n.chiffres > 0;
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
  return Analyser(texte, n);
}

namespace {

// Powers of ten that a double holds exactly.
constexpr double kPuissancesDix[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                     1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// The digits as an exact integer divided by an exact power of ten: one
// correctly rounded division, so the double nearest to the text. Holds for
// up to 15 digits, which every column of the files fits; longer numbers go
// through the general conversion.
bool ConversionRapide(const Nombre& n, double& v) {
  if (n.chiffres > 15) return false;
  v = static_cast<double>(n.mantisse) / kPuissancesDix[n.decimales.size()];
  return true;
}

}  // namespace

bool ConvertirDecimal(std::string_view texte, double& valeur) {
  Nombre n;
  if (!Analyser(texte, n)) return false;
  double v = 0;
  if (!ConversionRapide(n, v)) {
    const auto r = std::from_chars(n.corps.data(), n.corps.data() + n.corps.size(), v, std::chars_format::fixed);
    if (r.ec != std::errc() || r.ptr != n.corps.data() + n.corps.size()) return false;
  }
  valeur = n.negatif ? -v : v;
  return true;
}

bool ConvertirEntier(std::string_view texte, int16_t& valeur) {
  Nombre n;
  if (!Analyser(texte, n)) return false;
  long entier = 0;
  for (char c : n.entiers) {
    entier = entier * 10 + (c - '0');
    if (entier > 100000) return false;  // far outside the range already
  }
  // Round on the decimal text: above a half up, a half exactly to even.
  if (!n.decimales.empty()) {
    const int premiere = n.decimales[0] - '0';
    const bool resteNonNul = n.decimales.find_first_not_of('0', 1) != std::string_view::npos;
    if (premiere > 5 || (premiere == 5 && (resteNonNul || entier % 2 == 1))) ++entier;
  }
  if (n.negatif) entier = -entier;
  if (entier < -32768 || entier > 32767) return false;
  valeur = static_cast<int16_t>(entier);
  return true;
}

void AjouterEntierDiese(std::string& sortie, long long n) {
  if (n == 0) return;
  char tampon[24];
  const auto r = std::to_chars(tampon, tampon + sizeof tampon, n);
  sortie.append(tampon, r.ptr);
}

void AjouterEntierZeros(std::string& sortie, long long n, int chiffres) {
  char tampon[48];
  char* fin = tampon + sizeof tampon;
  char* p = fin;
  unsigned long long reste = n < 0 ? 0ULL - static_cast<unsigned long long>(n) : static_cast<unsigned long long>(n);
  do {
    *--p = static_cast<char>('0' + reste % 10);
    reste /= 10;
  } while (reste > 0);
  while (fin - p < chiffres && p > tampon + 1) *--p = '0';
  if (n < 0) *--p = '-';
  sortie.append(p, fin);
}

namespace {

// The number times 10^decimales rounded to an integer, exactly as the
// general formatting rounds it (to nearest, a half to even, on the exact
// value of the double). With a 64-bit long double mantissa the product of a
// double by 10 or 1000 is exact, so rounding it is exact too; where long
// double is no wider than double, or the number is large, this says no and
// the general formatting is used.
bool ArrondirRapide(double valeur, int decimales, int64_t& entier) {
  if constexpr (std::numeric_limits<long double>::digits < 64) {
    return false;
  } else {
    if (decimales > 3 || !(std::fabs(valeur) < 1e15)) return false;
    static constexpr long double kEchelles[] = {1.0L, 10.0L, 100.0L, 1000.0L};
    entier = std::llrint(static_cast<long double>(valeur) * kEchelles[decimales]);
    return true;
  }
}

}  // namespace

bool AjouterDecimal(std::string& sortie, double valeur, int decimales) {
  if (!std::isfinite(valeur)) return false;
  int64_t entier;
  if (ArrondirRapide(valeur, decimales, entier)) {
    // "#.000": the integer part without leading zeros, then the decimals.
    char tampon[32];
    char* fin = tampon + sizeof tampon;
    char* p = fin;
    uint64_t reste = entier < 0 ? 0 - static_cast<uint64_t>(entier) : static_cast<uint64_t>(entier);
    for (int k = 0; k < decimales; ++k, reste /= 10) *--p = static_cast<char>('0' + reste % 10);
    *--p = '.';
    for (; reste > 0; reste /= 10) *--p = static_cast<char>('0' + reste % 10);
    if (entier < 0) *--p = '-';  // a number rounding to zero has no sign
    sortie.append(p, fin);
    return true;
  }
  char tampon[400];  // the largest double in fixed notation, with its decimals
  const auto r = std::to_chars(tampon, tampon + sizeof tampon, valeur, std::chars_format::fixed, decimales);
  if (r.ec != std::errc()) return false;
  std::string_view texte(tampon, r.ptr - tampon);
  bool negatif = false;
  if (!texte.empty() && texte[0] == '-') {
    negatif = true;
    texte.remove_prefix(1);
  }
  if (texte.size() > 1 && texte[0] == '0' && texte[1] == '.') texte.remove_prefix(1);
  if (negatif && texte.find_first_not_of("0.") != std::string_view::npos) sortie += '-';
  sortie += texte;
  return true;
}

bool AlignerADroite(std::string& ligne, std::size_t debut, std::size_t largeur) {
  const std::size_t taille = ligne.size() - debut;
  if (taille >= largeur) return taille == largeur;
  const std::size_t blancs = largeur - taille;
  ligne.resize(ligne.size() + blancs);
  char* texte = ligne.data() + debut;
  std::memmove(texte + blancs, texte, taille);
  std::memset(texte, ' ', blancs);
  return true;
}

bool AjouterADroite(std::string& sortie, std::string_view texte, std::size_t largeur) {
  if (texte.size() < largeur) sortie.append(largeur - texte.size(), ' ');
  sortie += texte;
  return texte.size() <= largeur;
}

}  // namespace quillon
