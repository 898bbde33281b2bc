#include "model/point.h"

namespace quillon {

bool EstValeurValide(int valeur) {
  if (valeur < 11 || valeur > 89) return false;
  const int chiffre = valeur % 10;
  if (valeur <= 57) return chiffre >= 1 && chiffre <= 7;
  return chiffre >= 2 && chiffre <= 9;
}

bool EstThemeMD01(int32_t theme) {
  switch (theme) {
    case 1: case 2: case 3: case 4: case 6: case 7: case 9:
      return true;
    default:
      return false;
  }
}

int16_t ClasseEchellePourMot(std::string_view mot) {
  for (std::size_t i = 0; i < kMotsEchelle.size(); ++i) {
    if (mot == kMotsEchelle[i]) return static_cast<int16_t>(i + 1);
  }
  return 0;
}

int32_t GroupeThemePourMot(std::string_view mot) {
  const auto egal = [](std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
      const char c = a[i] >= 'a' && a[i] <= 'z' ? static_cast<char>(a[i] - 'a' + 'A') : a[i];
      if (c != b[i]) return false;
    }
    return true;
  };
  if (egal(mot, kMotsTheme[0])) return kGroupeCS;
  if (egal(mot, kMotsTheme[1])) return kGroupeOD;
  return 0;
}

}  // namespace quillon
