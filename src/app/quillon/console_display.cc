#include "app/quillon/console_display.h"

#include "io/console.h"

namespace quillon {

void AffichageConsole::MontrerBilan(const std::array<std::string, 4>& lignes) {
  for (const std::string& ligne : lignes) EcrireConsole(ligne + "\r\n");
}

void AffichageConsole::MontrerErreurFatale(const ErreurFatale& erreur) {
  EcrireConsole("ERREUR FATALE: " + MessageFatal(erreur) + "\r\n");
}

}  // namespace quillon
