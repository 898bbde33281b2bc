// The argument text on Windows: the command line as one text, in UTF-8 so
// that any file name Windows accepts goes through.
#include <windows.h>

#include "app/command_line.h"
#include "io/encoding.h"

namespace quillon {

std::optional<std::string> TexteArgumentsProgramme(int, const char* const*) {
  const wchar_t* ligne = ::GetCommandLineW();
  const std::string texte =
      TexteApresNomProgramme(Utf16VersUtf8(reinterpret_cast<const char16_t*>(ligne != nullptr ? ligne : L"")));
  if (texte.empty()) return std::nullopt;
  return texte;
}

}  // namespace quillon
