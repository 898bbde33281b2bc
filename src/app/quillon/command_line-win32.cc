// The argument text on Windows: the command line as one text, in UTF-8 so
// that any file name Windows accepts goes through.
#include <windows.h>

#include "app/quillon/command_line.h"
#include "io/wide_text.h"

namespace quillon {

std::optional<std::string> TexteArgumentsProgramme(int, const char* const*) {
  const wchar_t* ligne = ::GetCommandLineW();
  const std::string texte =
      TexteApresNomProgramme(Utf8(ligne != nullptr ? ligne : L""));
  if (texte.empty()) return std::nullopt;
  return texte;
}

}  // namespace quillon
