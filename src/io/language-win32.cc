#include <windows.h>

#include "io/translation.h"

namespace quillon {

// The language of Windows' own menus and dialogs for this user.
Langue LangueDuSysteme() {
  switch (PRIMARYLANGID(::GetUserDefaultUILanguage())) {
    case LANG_GERMAN: return Langue::Allemand;
    case LANG_ITALIAN: return Langue::Italien;
    default: return Langue::Francais;
  }
}

}  // namespace quillon
