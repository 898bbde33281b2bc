#include "io/locale.h"

#include <cstdio>

namespace quillon {

std::string ComposerDateJournal(const std::tm& moment, const std::string& nomMois) {
  char tampon[64];
  std::snprintf(tampon, sizeof tampon, "%02d-", moment.tm_mday);
  std::string texte = tampon;
  texte += nomMois;
  std::snprintf(tampon, sizeof tampon, "-%04d, %02d:%02d:%02d", moment.tm_year + 1900, moment.tm_hour,
                moment.tm_min, moment.tm_sec);
  texte += tampon;
  return texte;
}

}  // namespace quillon
