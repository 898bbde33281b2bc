// Standard output and error on POSIX: in the encoding of the user's locale.
#include <unistd.h>

#include "io/console.h"
#include "io/encoding.h"
#include "io/locale.h"

namespace quillon {
namespace {

void Ecrire(int fd, std::string_view texte) {
  const std::string utf8 = LocaleEnUtf8() ? Cp1252VersUtf8(texte) : std::string();
  std::string_view octets = LocaleEnUtf8() ? std::string_view(utf8) : texte;
  while (!octets.empty()) {
    const ssize_t n = ::write(fd, octets.data(), octets.size());
    if (n <= 0) return;
    octets.remove_prefix(static_cast<std::size_t>(n));
  }
}

}  // namespace

void EcrireConsole(std::string_view Texte) { Ecrire(STDOUT_FILENO, Texte); }

void EcrireErreur(std::string_view texte) { Ecrire(STDERR_FILENO, texte); }

}  // namespace quillon
