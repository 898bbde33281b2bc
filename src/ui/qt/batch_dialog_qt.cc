#include "ui/qt/batch_dialog_qt.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

#include "ui/qt/form_layout.h"
#include "ui/qt/main_window.h"

namespace quillon {
namespace {

std::string_view Vue(const QByteArray& octets) {
  return {octets.constData(), static_cast<std::size_t>(octets.size())};
}

}  // namespace

frmControlerLot::frmControlerLot(LogiqueDialogueLot& logique, QWidget* parent)
    : QDialog(parent), logique_(logique) {
  const Formulaire& forme = FormulaireLot();
  const double echelle = EchelleEcran(parent != nullptr ? parent : this);
  setObjectName(TexteQt(forme.nom));
  setFont(PoliceFormulaire(font()));
  setWindowTitle(TexteQt(forme.titre));
  RendreDialogueFixe(this, TailleTwips(forme.largeur, forme.hauteur, echelle));

  QWidget* precedent = nullptr;  // the tab order is the order of the form
  for (const Controle& c : forme.controles) {
    QWidget* controle = Creer(c, RectTwips(c.gauche, c.haut, c.largeur, c.hauteur, echelle));
    if (controle == nullptr) continue;
    controle->setObjectName(TexteQt(c.nom));
    if (c.genre != GenreControle::Etiquette) {
      if (precedent != nullptr) setTabOrder(precedent, controle);
      precedent = controle;
    }
  }
  Montrer();
}

QWidget* frmControlerLot::Creer(const Controle& c, const QRect& place) {
  const std::string_view nom = c.nom;
  QWidget* controle = nullptr;
  switch (c.genre) {
    case GenreControle::Etiquette: {
      auto* etiquette = new QLabel(TexteQt(c.texte), this);
      etiquette->setAlignment(Qt::AlignLeft | Qt::AlignTop);
      if (nom == "lblDossier") {
        etiquette->setGeometry(place);  // a path: elided rather than narrowed
        lblDossier_ = etiquette;
      } else {
        PlacerEtiquette(etiquette, place);
      }
      controle = etiquette;
      break;
    }
    case GenreControle::Liste: {
      auto* liste = new QComboBox(this);
      for (std::string_view entree : EntreesListeLot(nom)) liste->addItem(TexteQt(entree));
      liste->setGeometry(place.x(), place.y(), place.width(), liste->sizeHint().height());
      connect(liste, &QComboBox::currentIndexChanged, this, [this, liste, nom] {
        logique_.Liste_Click(nom, Vue(liste->currentText().toUtf8()));
        Montrer();
      });
      listes_[nom] = liste;
      controle = liste;
      break;
    }
    case GenreControle::Case: {
      auto* coche = new QCheckBox(TexteQt(c.texte), this);
      coche->setGeometry(place);
      connect(coche, &QCheckBox::toggled, this, [this, nom](bool cochee) { logique_.Case_Click(nom, cochee); });
      cases_[nom] = coche;
      controle = coche;
      break;
    }
    case GenreControle::Bouton: {
      auto* bouton = new QPushButton(TexteQt(c.texte), this);
      bouton->setAutoDefault(false);
      bouton->setDefault(nom == "btnControler");
      bouton->setGeometry(place);
      if (nom == "btnControler") connect(bouton, &QPushButton::clicked, this, &frmControlerLot::btnControler_Click);
      if (nom == "btnAbandonner") connect(bouton, &QPushButton::clicked, this, &QDialog::reject);
      if (nom == "btnDossier") connect(bouton, &QPushButton::clicked, this, &frmControlerLot::btnDossier_Click);
      controle = bouton;
      break;
    }
    case GenreControle::Image: break;  // none in this dialog
  }
  return controle;
}

void frmControlerLot::Montrer() {
  for (auto& [nom, liste] : listes_) {
    const QSignalBlocker bloque(liste);
    liste->setCurrentIndex(liste->findText(TexteQt(logique_.Selection(nom))));
  }
  for (auto& [nom, coche] : cases_) {
    const QSignalBlocker bloque(coche);
    coche->setChecked(logique_.Coche(nom));
  }
  if (lblDossier_ != nullptr) {
    const QString texte = QString::fromStdString(logique_.TexteDossier());
    lblDossier_->setToolTip(texte);
    lblDossier_->setText(lblDossier_->fontMetrics().elidedText(texte, Qt::ElideMiddle, lblDossier_->width()));
  }
}

void frmControlerLot::btnControler_Click() {
  if (logique_.btnControler_Click(static_cast<QWidget*>(this))) accept();
}

void frmControlerLot::btnDossier_Click() {
  logique_.btnDossier_Click(static_cast<QWidget*>(this));
  Montrer();
}

}  // namespace quillon
