#include "ui/qt/form_layout.h"

#include <climits>
#include <cmath>

#include <QFontMetrics>
#include <QLabel>
#include <QWidget>

namespace quillon {
namespace {

bool TexteTient(const QLabel& etiquette, const QFont& police, const QSize& place) {
  const QFontMetrics mesure(police);
  if (etiquette.wordWrap()) {
    const QRect rect = mesure.boundingRect(QRect(0, 0, place.width(), INT_MAX),
                                           static_cast<int>(etiquette.alignment()) | Qt::TextWordWrap,
                                           etiquette.text());
    return rect.height() <= place.height() && rect.width() <= place.width();
  }
  return mesure.horizontalAdvance(etiquette.text()) <= place.width();
}

}  // namespace

double EchelleEcran(const QWidget* fenetre) {
  const int dpi = fenetre != nullptr ? fenetre->logicalDpiX() : 96;
  return dpi > 0 ? dpi / 96.0 : 1.0;
}

int TwipsEnPixels(int twips, double echelle) {
  return static_cast<int>(std::lround(twips * echelle / 15.0));
}

QRect RectTwips(int gauche, int haut, int largeur, int hauteur, double echelle) {
  return QRect(TwipsEnPixels(gauche, echelle), TwipsEnPixels(haut, echelle), TwipsEnPixels(largeur, echelle),
               TwipsEnPixels(hauteur, echelle));
}

QSize TailleTwips(int largeur, int hauteur, double echelle) {
  return QSize(TwipsEnPixels(largeur, echelle), TwipsEnPixels(hauteur, echelle));
}

QFont PoliceFormulaire(const QFont& base) {
  QFont police(base);
  police.setPointSize(8);
  return police;
}

void RendreDialogueFixe(QWidget* fenetre, QSize client) {
  fenetre->setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowCloseButtonHint | Qt::MSWindowsFixedSizeDialogHint);
  fenetre->setFixedSize(client);
}

void PlacerEtiquette(QLabel* etiquette, const QRect& place) {
  etiquette->setGeometry(place);
  QFont police = etiquette->font();
  static constexpr int kEtirements[] = {100, 93, 87, 81, 75};
  for (const int etirement : kEtirements) {
    police.setStretch(etirement);
    if (TexteTient(*etiquette, police, place.size())) {
      if (etirement != 100) etiquette->setFont(police);
      return;
    }
  }
  while (police.pointSizeF() > 6.0 && !TexteTient(*etiquette, police, place.size())) {
    police.setPointSizeF(police.pointSizeF() - 0.5);
  }
  etiquette->setFont(police);
}

}  // namespace quillon
