#include "app/console.h"

namespace quillon {

void AffichageConsole::MontrerBilan(const std::array<std::string, 4>& lignes) {
  for (const std::string& ligne : lignes) EcrireConsole(ligne + "\r\n");
}

void AffichageConsole::MontrerErreurFatale(const std::string& message) {
  EcrireConsole("ERREUR FATALE: " + message + "\r\n");
}

}  // namespace quillon
