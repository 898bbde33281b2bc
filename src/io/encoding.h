// Windows-1252, the single-byte code page of the files and the log, and its
// meeting points with UTF-8 (the console and file names under a UTF-8
// locale, Qt's texts).
#pragma once

#include <string>
#include <string_view>

namespace quillon {

std::string Cp1252VersUtf8(std::string_view texte);
// The same, added at the end of `sortie`, which keeps its room.
void AjouterCp1252EnUtf8(std::string& sortie, std::string_view texte);

// Strict UTF-8: no overlong form, no surrogate, nothing past U+10FFFF.
bool EstUtf8(std::string_view texte);
// A name as the reports write it: as it is when UTF-8, else read as
// Windows-1252.
std::string NomEnUtf8(std::string_view nom);

// Valid UTF-8 becomes Windows-1252, each character that the code page lacks
// becoming "?". A text that is not valid UTF-8 is returned unchanged: it is
// taken to be single-byte already.
std::string Utf8VersCp1252(std::string_view texte);

// UTF-16, the text of Windows' wide API, to and from UTF-8. A lone half
// of a surrogate pair, which a Windows file name may hold, goes through as
// its three-byte form, so that a name makes the round trip unchanged; bytes
// that are not UTF-8 become U+FFFD.
std::u16string Utf8VersUtf16(std::string_view texte);
std::string Utf16VersUtf8(std::u16string_view texte);

// Capitals as the code page knows them: a-z, and the accented small letters
// (é -> É, œ -> Œ, ÿ -> Ÿ...).
char MajusculeAnsi(char c);

}  // namespace quillon
