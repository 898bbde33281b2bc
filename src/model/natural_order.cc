#include "model/natural_order.h"

#include <cstddef>

namespace quillon {
namespace {

char Minuscule(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
bool Chiffre(char c) { return c >= '0' && c <= '9'; }

// Compares the runs of digits starting at a[i] and b[j] as numbers: -1, 0
// or 1; moves i and j past them.
int ComparerNombres(std::string_view a, std::size_t& i, std::string_view b, std::size_t& j) {
  while (i < a.size() && a[i] == '0') ++i;
  while (j < b.size() && b[j] == '0') ++j;
  const std::size_t debutA = i, debutB = j;
  while (i < a.size() && Chiffre(a[i])) ++i;
  while (j < b.size() && Chiffre(b[j])) ++j;
  const std::size_t na = i - debutA, nb = j - debutB;
  if (na != nb) return na < nb ? -1 : 1;
  const int c = a.substr(debutA, na).compare(b.substr(debutB, nb));
  return c < 0 ? -1 : c > 0 ? 1 : 0;
}

}  // namespace

bool AvantNaturel(std::string_view a, std::string_view b) {
  std::size_t i = 0, j = 0;
  while (i < a.size() && j < b.size()) {
    if (Chiffre(a[i]) && Chiffre(b[j])) {
      if (const int c = ComparerNombres(a, i, b, j); c != 0) return c < 0;
      continue;
    }
    const char ca = Minuscule(a[i]), cb = Minuscule(b[j]);
    if (ca != cb) return static_cast<unsigned char>(ca) < static_cast<unsigned char>(cb);
    ++i, ++j;
  }
  if ((a.size() - i) != (b.size() - j)) return a.size() - i < b.size() - j;
  return a < b;
}

}  // namespace quillon
