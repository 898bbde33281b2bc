#include "ui/registry.h"

namespace quillon {

std::string TexteValeurRegistre(const char* tampon, std::size_t tailleRendue) {
  std::string texte(tampon, tailleRendue);
  if (!texte.empty() && texte.back() == '\0') texte.pop_back();
  return texte;
}

}  // namespace quillon
