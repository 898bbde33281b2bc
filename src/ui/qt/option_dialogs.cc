#include "ui/qt/option_dialogs.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include "ui/qt/form_layout.h"
#include "ui/qt/main_window.h"

namespace quillon {

DialogueOptions::DialogueOptions(LogiqueOptions& logique, QWidget* parent)
    : QDialog(parent), logique_(logique) {
  const Formulaire& forme = logique.Forme();
  const double echelle = EchelleEcran(parent != nullptr ? parent : this);
  setObjectName(TexteQt(forme.nom));
  setFont(PoliceFormulaire(font()));
  setWindowTitle(TexteQt(forme.titre));
  RendreDialogueFixe(this, TailleTwips(forme.largeur, forme.hauteur, echelle));

  QWidget* precedent = nullptr;  // the tab order is the order of the form
  for (const Controle& c : forme.controles) {
    const QRect place = RectTwips(c.gauche, c.haut, c.largeur, c.hauteur, echelle);
    QWidget* controle = nullptr;
    switch (c.genre) {
      case GenreControle::Etiquette: {
        auto* etiquette = new QLabel(TexteQt(c.texte), this);
        etiquette->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        PlacerEtiquette(etiquette, place);
        controle = etiquette;
        break;
      }
      case GenreControle::Liste: {
        auto* liste = new QComboBox(this);
        liste->setEditable(false);
        liste->setGeometry(place.x(), place.y(), place.width(), liste->sizeHint().height());
        const std::string_view nom = c.nom;
        connect(liste, &QComboBox::currentIndexChanged, this, [this, liste, nom] {
          const QByteArray texte = liste->currentText().toUtf8();
          const std::string_view mot(texte.constData(), static_cast<std::size_t>(texte.size()));
          if (nom == "lstEchelle") logique_.lstEchelle_Click(mot);
          if (nom == "lstTheme") logique_.lstTheme_Click(mot);
        });
        listes_[c.nom] = liste;
        controle = liste;
        break;
      }
      case GenreControle::Bouton: {
        auto* bouton = new QPushButton(TexteQt(c.texte), this);
        // Not a default button, not even while it has the focus: Enter
        // clicks only the button that has the focus (keyPressEvent).
        bouton->setAutoDefault(false);
        bouton->setDefault(false);
        bouton->setGeometry(place);
        if (c.nom == "btnConvertir") connect(bouton, &QPushButton::clicked, this, &DialogueOptions::btnConvertir_Click);
        if (c.nom == "btnAbandonner") connect(bouton, &QPushButton::clicked, this, &DialogueOptions::btnAbandonner_Click);
        controle = bouton;
        break;
      }
      case GenreControle::Image:
      case GenreControle::Case: break;  // none in these dialogs
    }
    if (controle == nullptr) continue;
    controle->setObjectName(TexteQt(c.nom));
    if (c.genre != GenreControle::Etiquette) {
      if (precedent != nullptr) setTabOrder(precedent, controle);
      precedent = controle;
    }
  }
}

void DialogueOptions::Afficher() {
  if (!logique_.Charge()) Form_Load();
  show();
  raise();
  activateWindow();
}

void DialogueOptions::Form_Load() {
  logique_.Form_Load();
  for (auto& [nom, liste] : listes_) {
    liste->clear();
    for (std::string_view entree : EntreesListe(nom)) liste->addItem(TexteQt(entree));
    liste->setCurrentIndex(0);  // reported to the logic as a click
  }
  findChild<QPushButton*>(QStringLiteral("btnConvertir"))->setFocus();
}

void DialogueOptions::btnConvertir_Click() {
  hide();
  logique_.btnConvertir_Click();
}

void DialogueOptions::closeEvent(QCloseEvent* evenement) {
  // Closed from the title bar: the dialog is discarded with its choices.
  logique_.Form_Unload();
  QDialog::closeEvent(evenement);
}

void DialogueOptions::keyPressEvent(QKeyEvent* evenement) {
  switch (evenement->key()) {
    case Qt::Key_Escape:
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (auto* bouton = qobject_cast<QPushButton*>(focusWidget()); bouton != nullptr && bouton->isEnabled()) {
        bouton->click();
      }
      break;
    default:
      QDialog::keyPressEvent(evenement);
      return;
  }
  evenement->accept();
}

}  // namespace quillon
