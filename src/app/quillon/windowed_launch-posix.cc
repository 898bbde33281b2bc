#include <unistd.h>

#include <climits>
#include <string>

#include "io/console.h"
#include "app/quillon/windowed_launch.h"
#include "io/encoding.h"

namespace quillon {
namespace {

// The folder of the running executable.
std::string DossierExecutable() {
  char chemin[PATH_MAX];
  const ssize_t n = ::readlink("/proc/self/exe", chemin, sizeof chemin - 1);
  if (n <= 0) return ".";
  const std::string complet(chemin, static_cast<std::size_t>(n));
  const std::size_t barre = complet.find_last_of('/');
  return barre == std::string::npos ? "." : complet.substr(0, barre);
}

}  // namespace

int LancerModeFenetre(char** argv) {
  const std::string programme = DossierExecutable() + "/quillon-fenetres";
  ::execv(programme.c_str(), argv);
  const std::string ligne =
      "quillon: la fenêtre principale n'est pas disponible (" + programme +
      " introuvable); pour convertir en console: quillon SOURCE CIBLE [ECHELLE THEME]\n";
  EcrireErreur(Utf8VersCp1252(ligne));
  return 1;
}

}  // namespace quillon
