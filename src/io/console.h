// Standard output and standard error, where the console programs write.
#pragma once

#include <string_view>

namespace quillon {

// Writes a Windows-1252 text to standard output unchanged, adding no line
// end. A failing write goes unnoticed. The platform's: on POSIX in the
// user's encoding (UTF-8 under a UTF-8 locale, the bytes as they are
// otherwise); on Windows the bytes as they are into a file or a pipe, and
// the characters themselves into a console.
void EcrireConsole(std::string_view Texte);
// The same on standard error.
void EcrireErreur(std::string_view texte);

}  // namespace quillon
