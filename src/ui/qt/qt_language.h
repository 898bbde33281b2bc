// Qt's own texts (the standard dialogs' "Cancel", "File name"...) in the
// program's language, French included, whatever the system's locale says.
#pragma once

#include <QTranslator>

#include "io/translation.h"

namespace quillon {

// Loads Qt's translations of `langue` into `traducteur` and installs it in
// the application (after the one it held, if any); false when they are not
// installed (Debian's qt6-translations-l10n).
bool InstallerTraductionQt(QTranslator& traducteur, Langue langue);

}  // namespace quillon
