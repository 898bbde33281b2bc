// What the user's locale decides: the encoding of the console and of file
// names, and the month abbreviations of the log's date line.
#pragma once

#include <ctime>
#include <string>

#include "io/encoding.h"

namespace quillon {

// True when the user's locale (LC_ALL, LC_CTYPE, LANG) encodes text in
// UTF-8. Always false on Windows, whose console and file names do not go
// through the locale's encoding.
bool LocaleEnUtf8();

// "dd-mmm-yyyy, hh:mm:ss" with the abbreviated month name of the locale
// `nomLocale` ("" for the user's own, e.g. "mars" under fr_FR, "Mar" under
// C), in Windows-1252.
std::string FormaterDateJournal(const std::tm& moment, const char* nomLocale = "");

// The same for the current local time.
std::string DateHeureJournal();

// "dd-" month "-yyyy, hh:mm:ss", the month's name given.
std::string ComposerDateJournal(const std::tm& moment, const std::string& nomMois);

}  // namespace quillon

namespace quillon {

// A file name as the log and the messages show it: in Windows-1252,
// converted from UTF-8 when the locale uses UTF-8 for file names (always on
// Windows, whose names the program holds in UTF-8), "?" standing for a
// character that the code page lacks.
std::string CheminAffichable(const std::string& nom);
// The same in UTF-8, for a message in the user's language, which the
// console turns back into those bytes.
inline std::string CheminAffichableUtf8(const std::string& nom) { return Cp1252VersUtf8(CheminAffichable(nom)); }

}  // namespace quillon
