#include "ui/qt/about_box.h"

#include <algorithm>

#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include "ui/forms.h"
#include "ui/qt/app_icon.h"
#include "ui/qt/form_layout.h"
#include "ui/qt/main_window.h"
#include "ui/window_logic.h"

namespace quillon {

frmAPropos::frmAPropos(Services& services, QWidget* parent)
    : QDialog(parent), services_(services), echelle_(EchelleEcran(parent != nullptr ? parent : this)) {
  const Formulaire& forme = FormulaireAPropos();
  setObjectName(TexteQt(forme.nom));
  setFont(PoliceFormulaire(font()));
  RendreDialogueFixe(this, TailleTwips(forme.largeur, forme.hauteur, echelle_));

  QWidget* precedent = nullptr;
  for (const Controle& c : forme.controles) {
    const QRect place = RectTwips(c.gauche, c.haut, c.largeur, c.hauteur, echelle_);
    if (c.genre == GenreControle::Bouton) {
      auto* bouton = new QPushButton(TexteQt(c.texte), this);
      bouton->setObjectName(TexteQt(c.nom));
      bouton->setGeometry(place);
      if (c.nom == "cmdOK") {
        bouton->setDefault(true);
        connect(bouton, &QPushButton::clicked, this, &frmAPropos::cmdOK_Click);
      } else {
        connect(bouton, &QPushButton::clicked, this, &frmAPropos::cmdSysInfo_Click);
      }
      if (precedent != nullptr) setTabOrder(precedent, bouton);
      precedent = bouton;
      continue;
    }
    auto* label = new QLabel(this);
    label->setObjectName(TexteQt(c.nom));
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setGeometry(place);
    if (c.genre == GenreControle::Image) label->setPixmap(IconeApplication());
    if (c.nom == "lblTitle") {
      QFont grande = label->font();
      grande.setPointSize(14);
      label->setFont(grande);
    }
    if (c.nom == "lblDescription" || c.nom == "lblDisclaimer") label->setWordWrap(true);
  }
}

void frmAPropos::Afficher() { MontrerFormulaire(*this, charge_); }

void frmAPropos::Form_Load() {
  setWindowTitle(TexteQt(TexteAPropos("frmAPropos")));
  for (const Controle& c : FormulaireAPropos().controles) {
    if (c.genre != GenreControle::Etiquette) continue;
    auto* label = findChild<QLabel*>(TexteQt(c.nom));
    label->setText(TexteQt(TexteAPropos(c.nom)));
    PlacerEtiquette(label, label->geometry());
  }
  findChild<QPushButton*>(QStringLiteral("cmdOK"))->setFocus();
}

void frmAPropos::cmdSysInfo_Click() {
  StartSysInfo(services_.registre, services_.programmes, services_.messages, static_cast<QWidget*>(this));
}

void frmAPropos::done(int resultat) {
  // However it is closed (OK, Enter, Escape, the title bar), the box is
  // unloaded.
  charge_ = false;
  QDialog::done(resultat);
}

void frmAPropos::paintEvent(QPaintEvent* evenement) {
  QDialog::paintEvent(evenement);
  // The etched rule between the description and the disclaimer.
  QPainter p(this);
  const Regle& r = kRegleAPropos;
  const int fin = TwipsEnPixels(r.fin, echelle_);
  const int gris = TwipsEnPixels(r.gaucheGris, echelle_);
  const int blanc = TwipsEnPixels(r.gaucheBlanc, echelle_);
  const int hautGris = TwipsEnPixels(r.hautGris, echelle_);
  const int epaisseur = std::max(1, TwipsEnPixels(15, echelle_));
  const int hautBlanc = std::max(TwipsEnPixels(r.hautBlanc, echelle_), hautGris + epaisseur);
  p.fillRect(QRect(gris, hautGris, fin - gris, epaisseur), QColor(0x80, 0x80, 0x80));
  p.fillRect(QRect(blanc, hautBlanc, fin - blanc, 2 * epaisseur), Qt::white);
}

}  // namespace quillon
