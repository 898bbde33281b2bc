// Windows: the windowed mode is not built for Windows yet; started without
// arguments, the program says so in one line and ends.
#include "app/console.h"
#include "app/windowed_launch.h"
#include "io/encoding.h"

namespace quillon {

int LancerModeFenetre(char**) {
  EcrireErreur(Utf8VersCp1252(
      "quillon: le mode fenêtré n'est pas disponible dans cette version pour Windows; pour convertir en "
      "console: quillon SOURCE CIBLE [ECHELLE THEME]\r\n"));
  return 1;
}

}  // namespace quillon
