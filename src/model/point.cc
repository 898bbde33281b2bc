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

}  // namespace quillon
