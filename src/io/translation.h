// The language of the texts the user reads: windows, reports, usage and
// warnings. Target files, logs and the programs' standard output lines are
// never translated. The texts of the code are French; German and Italian
// come from gettext catalogues (po/*.po) compiled into the programs, so that
// nothing has to sit beside them.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillon {

enum class Langue : uint8_t { Francais, Allemand, Italien };

// The language of every text translated from now on; French at start.
void ChoisirLangue(Langue langue);
Langue LangueChoisie();

// "fr", "de", "it" and their language; nothing for any other code.
std::optional<Langue> LangueDuCode(std::string_view code);
std::string_view CodeLangue(Langue langue);

// The user's language as the system tells it: the user interface's on
// Windows, LANGUAGE, LC_ALL, LC_MESSAGES and LANG elsewhere. French for any
// language other than German and Italian.
Langue LangueDuSysteme();

// The same from the variables' values (null or empty: unset), as gettext
// reads them: LANGUAGE's list first (its first language with texts: French,
// German or Italian), unless the locale is C or POSIX; else the first set of
// LC_ALL, LC_MESSAGES and LANG.
Langue LangueDesVariables(const char* language, const char* lcAll, const char* lcMessages, const char* lang);

// `texte` (UTF-8) in the chosen language: its translation, or itself in
// French or where the catalogue has none.
const char* Traduire(const char* texte);
std::string_view Traduire(std::string_view texte);  // a text of a table, marked N_
// The same in another language than the one chosen.
std::string_view Traduire(std::string_view texte, Langue langue);

// `modele` translated, its %s (in order) or %N$s (the Nth value) replaced
// by `valeurs`, and %% by %.
std::string Formater(const char* modele, std::initializer_list<std::string_view> valeurs);

// Marks a text for the catalogues where it is kept untranslated (a table's
// entry), to be translated where it is shown.
constexpr const char* N_(const char* texte) { return texte; }

// The compiled catalogue (GNU .mo) of a language; empty for French.
std::span<const unsigned char> CatalogueMo(Langue langue);

}  // namespace quillon
