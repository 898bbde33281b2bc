#include "formats/numbers.h"

#include <charconv>
#include <cmath>

namespace quillon {
namespace {

// A number split by the grammar of the files.
struct Nombre {
  bool negatif = false;
  std::string_view corps;    // digits and point, without sign or spaces
  std::string_view entiers;  // digits before the point
  std::string_view decimales;
};

bool Analyser(std::string_view texte, Nombre& n) {
  texte = Rogner(texte);
  if (texte.empty()) return false;
  if (texte[0] == '+' || texte[0] == '-') {
    n.negatif = texte[0] == '-';
    texte.remove_prefix(1);
  }
  n.corps = texte;
  std::size_t i = 0;
  while (i < texte.size() && texte[i] >= '0' && texte[i] <= '9') ++i;
  n.entiers = texte.substr(0, i);
  if (i < texte.size() && texte[i] == '.') {
    const std::size_t debut = ++i;
    while (i < texte.size() && texte[i] >= '0' && texte[i] <= '9') ++i;
    n.decimales = texte.substr(debut, i - debut);
  }
  return i == texte.size() && (!n.entiers.empty() || !n.decimales.empty());
}

}  // namespace

std::string_view Rogner(std::string_view texte) {
  const std::size_t debut = texte.find_first_not_of(' ');
  if (debut == std::string_view::npos) return {};
  const std::size_t fin = texte.find_last_not_of(' ');
  return texte.substr(debut, fin - debut + 1);
}

bool EstNumerique(std::string_view texte) {
  Nombre n;
  return Analyser(texte, n);
}

bool ConvertirDecimal(std::string_view texte, double& valeur) {
  Nombre n;
  if (!Analyser(texte, n)) return false;
  double v = 0;
  const auto r = std::from_chars(n.corps.data(), n.corps.data() + n.corps.size(), v, std::chars_format::fixed);
  if (r.ec != std::errc() || r.ptr != n.corps.data() + n.corps.size()) return false;
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
    const int premier = n.decimales[0] - '0';
    const bool resteNonNul = n.decimales.substr(1).find_first_not_of('0') != std::string_view::npos;
    if (premier > 5 || (premier == 5 && (resteNonNul || entier % 2 == 1))) ++entier;
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
  char tampon[24];
  const auto r = std::to_chars(tampon, tampon + sizeof tampon, n < 0 ? -n : n);
  if (n < 0) sortie += '-';
  for (long k = r.ptr - tampon; k < chiffres; ++k) sortie += '0';
  sortie.append(tampon, r.ptr);
}

bool AjouterDecimal(std::string& sortie, double valeur, int decimales) {
  if (!std::isfinite(valeur)) return false;
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

bool AjouterADroite(std::string& sortie, std::string_view texte, std::size_t largeur) {
  if (texte.size() < largeur) sortie.append(largeur - texte.size(), ' ');
  sortie += texte;
  return texte.size() <= largeur;
}

}  // namespace quillon
