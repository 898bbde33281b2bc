// The command line: quillon SRC TGT [SCALE THEME].
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

// Splits the argument text into words at spaces and tabs; quotes are
// ordinary characters. Index 0 is empty, the words are 1 to n; at most
// `nbMotsMax` words are kept, the rest of the text is dropped.
std::vector<std::string> DecouperLigneCommande(std::string_view texte, int16_t nbMotsMax);

// Two words (source, target) or four (source, target, scale "250" to "5000",
// theme group "CS"/"OD" in any case). False when the words are not
// acceptable; scale class and theme group are left as given with two words.
bool LireArguments(std::string_view texte, std::string& Source, std::string& Cible, int16_t& ClasseEchelle,
                   int32_t& GroupeTheme);

// The argument text of the program, or nothing when it was started without
// any argument (windowed mode). The platform's:
// - on POSIX the system hands the words over already split: any argument,
//   even an empty one, counts, and the text is the words joined by single
//   spaces (JoindreMots);
// - on Windows the command line is one text, and the argument text is what
//   follows the program's own name (TexteApresNomProgramme).
std::optional<std::string> TexteArgumentsProgramme(int argc, const char* const* argv);

std::string JoindreMots(int argc, const char* const* argv);

// What follows the program's name at the start of a Windows command line:
// the name runs to its closing double quote when it opens with one, to the
// first blank or tab otherwise; the one blank or tab that separates it from
// the arguments is not part of them. So `"C:\Program Files\q.exe"` and
// `q.exe ` give "", and `q.exe  a b` gives " a b".
std::string TexteApresNomProgramme(std::string_view ligneCommande);

}  // namespace quillon
