// Standard output and error on Windows. A console shows the text through
// the wide API, so that "é" is "é" whatever the console's code page; a file
// or a pipe gets the Windows-1252 bytes as they are, the same bytes as on
// Linux.
#include <windows.h>

#include <string>

#include "io/console.h"
#include "io/encoding.h"
#include "io/wide_text.h"

namespace quillon {
namespace {

void Ecrire(DWORD quelle, std::string_view texte) {
  const HANDLE sortie = ::GetStdHandle(quelle);
  if (sortie == INVALID_HANDLE_VALUE || sortie == nullptr) return;
  DWORD mode = 0;
  if (::GetConsoleMode(sortie, &mode)) {
    const std::wstring large = Large(Cp1252VersUtf8(texte));
    DWORD ecrits = 0;
    ::WriteConsoleW(sortie, large.data(), static_cast<DWORD>(large.size()), &ecrits, nullptr);
    return;
  }
  while (!texte.empty()) {
    DWORD ecrits = 0;
    if (!::WriteFile(sortie, texte.data(), static_cast<DWORD>(texte.size()), &ecrits, nullptr) || ecrits == 0) return;
    texte.remove_prefix(ecrits);
  }
}

}  // namespace

void EcrireConsole(std::string_view Texte) { Ecrire(STD_OUTPUT_HANDLE, Texte); }

void EcrireErreur(std::string_view texte) { Ecrire(STD_ERROR_HANDLE, texte); }

}  // namespace quillon
