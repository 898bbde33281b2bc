// The command line: quillon SRC TGT [SCALE THEME].
#pragma once

#include <cstdint>
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

// The argument text rebuilt from words the system has already split: the
// words joined by single spaces.
std::string TexteArguments(int argc, const char* const* argv);

}  // namespace quillon
