#include "app/console.h"

#include <unistd.h>

#include "io/encoding.h"
#include "io/locale.h"

namespace quillon {

void EcrireConsole(std::string_view Texte) {
  const std::string utf8 = LocaleEnUtf8() ? Cp1252VersUtf8(Texte) : std::string();
  std::string_view octets = LocaleEnUtf8() ? std::string_view(utf8) : Texte;
  while (!octets.empty()) {
    const ssize_t n = ::write(STDOUT_FILENO, octets.data(), octets.size());
    if (n <= 0) return;
    octets.remove_prefix(static_cast<std::size_t>(n));
  }
}

void AffichageConsole::MontrerBilan(const std::array<std::string, 4>& lignes) {
  for (const std::string& ligne : lignes) EcrireConsole(ligne + "\r\n");
}

void AffichageConsole::MontrerErreurFatale(const std::string& message) {
  EcrireConsole("ERREUR FATALE: " + message + "\r\n");
}

}  // namespace quillon
