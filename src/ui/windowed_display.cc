#include "ui/windowed_display.h"

#include "version.h"
#include "io/encoding.h"

namespace quillon {

QString TexteQt(const std::string& texte) { return QString::fromStdString(Cp1252VersUtf8(texte)); }

void AffichageFenetre::MontrerBilan(const std::array<std::string, 4>& lignes) {
  std::string texte = lignes[0];
  for (std::size_t i = 1; i < lignes.size(); ++i) texte += "\r\n" + lignes[i];
  messages_.Message(parent_, QString::fromUtf8(kTitreApplication), TexteQt(texte));
}

void AffichageFenetre::MontrerErreurFatale(const std::string& message) {
  messages_.ErreurFatale(parent_, TexteQt(message));
}

}  // namespace quillon
