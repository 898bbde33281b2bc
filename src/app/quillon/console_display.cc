#include "app/quillon/console_display.h"

#include "io/console.h"
#include "io/journal.h"

namespace quillon {

void AffichageConsole::MontrerBilan(const ComptesBilan& comptes) {
  for (const std::string& ligne : TexteBilan(comptes)) EcrireConsole(ligne + "\r\n");
}

void AffichageConsole::MontrerErreurFatale(const ErreurFatale& erreur) {
  EcrireConsole("ERREUR FATALE: " + MessageFatal(erreur) + "\r\n");
}

}  // namespace quillon
