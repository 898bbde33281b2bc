// Placing the controls of the forms, which are drawn in twips (1/1440 inch):
// 15 twips to a pixel on a 96-dpi screen, proportionally more pixels on a
// screen set to a larger logical dpi.
#pragma once

#include <QFont>
#include <QRect>
#include <QSize>

class QLabel;
class QWidget;

namespace quillon {

// Pixels per pixel-at-96-dpi for the screen of `fenetre`.
double EchelleEcran(const QWidget* fenetre);

int TwipsEnPixels(int twips, double echelle);
QRect RectTwips(int gauche, int haut, int largeur, int hauteur, double echelle);
QSize TailleTwips(int largeur, int hauteur, double echelle);

// The 8-point dialog font the forms were drawn for, in the family of `base`.
QFont PoliceFormulaire(const QFont& base);

// A fixed-size dialog window: caption and close button, no minimize or
// maximize button, a client area of `client` pixels. Owned by its parent
// window, it has no task-bar entry of its own.
void RendreDialogueFixe(QWidget* fenetre, QSize client);

// Shows a form without waiting for it, in front: loaded first (Form_Load)
// unless it still is from an earlier showing.
template <typename Formulaire>
void MontrerFormulaire(Formulaire& formulaire, bool& charge) {
  if (!charge) {
    formulaire.Form_Load();
    charge = true;
  }
  formulaire.show();
  formulaire.raise();
  formulaire.activateWindow();
}

// Puts the label in its place. Where the screen's font is wider than the one
// the form was drawn for, the label's font is narrowed, then made smaller,
// until the text fits (on one line, or within the height for a label that
// wraps its words).
void PlacerEtiquette(QLabel* etiquette, const QRect& place);

}  // namespace quillon
