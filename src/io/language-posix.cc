#include <cstdlib>

#include "io/translation.h"

namespace quillon {

Langue LangueDuSysteme() {
  return LangueDesVariables(std::getenv("LANGUAGE"), std::getenv("LC_ALL"), std::getenv("LC_MESSAGES"),
                            std::getenv("LANG"));
}

}  // namespace quillon
