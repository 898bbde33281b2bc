#include "ui/option_dialogs.h"

#include <array>

#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

#include "conversion/conversions.h"
#include "ui/form_layout.h"

namespace quillon {
namespace {

const QString kTexteTheme = QStringLiteral("Thème pour Points de situation:");

}  // namespace

int16_t ClasseEchellePourTexte(const QString& texte) {
  static const std::array<QString, 6> kEchelles = {QStringLiteral("250"),  QStringLiteral("500"),
                                                   QStringLiteral("1000"), QStringLiteral("2000"),
                                                   QStringLiteral("4000"), QStringLiteral("5000")};
  for (std::size_t i = 0; i < kEchelles.size(); ++i) {
    if (texte == kEchelles[i]) return static_cast<int16_t>(i + 1);
  }
  return 0;
}

int32_t GroupeThemePourTexte(const QString& texte) {
  if (texte == QLatin1String("CS")) return 2;
  if (texte == QLatin1String("OD")) return 3;
  return 0;
}

// ---------------------------------------------------------------------------

DialogueOptions::DialogueOptions(ReglagesExecution& reglages, FinProgramme& fin, QWidget* parent,
                                 const QString& titre, int largeurTwips, int hauteurTwips)
    : QDialog(parent), reglages_(reglages), fin_(fin), echelle_(EchelleEcran(parent != nullptr ? parent : this)) {
  setFont(PoliceFormulaire(font()));
  setWindowTitle(titre);
  RendreDialogueFixe(this, TailleTwips(largeurTwips, hauteurTwips, echelle_));
}

QLabel* DialogueOptions::NouvelleEtiquette(const char* nom, const QString& texte, int gauche, int haut,
                                           int largeur, int hauteur) {
  auto* etiquette = new QLabel(texte, this);
  etiquette->setObjectName(QLatin1String(nom));
  etiquette->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  PlacerEtiquette(etiquette, RectTwips(gauche, haut, largeur, hauteur, echelle_));
  return etiquette;
}

QComboBox* DialogueOptions::NouvelleListe(const char* nom, int gauche, int haut, int largeur) {
  auto* liste = new QComboBox(this);
  liste->setObjectName(QLatin1String(nom));
  liste->setEditable(false);
  const QRect place = RectTwips(gauche, haut, largeur, 0, echelle_);
  liste->setGeometry(place.x(), place.y(), place.width(), liste->sizeHint().height());
  return liste;
}

QPushButton* DialogueOptions::NouveauBouton(const char* nom, const QString& texte, int gauche, int haut,
                                            int largeur, int hauteur) {
  auto* bouton = new QPushButton(texte, this);
  bouton->setObjectName(QLatin1String(nom));
  // Not a default button, not even while it has the focus: Enter clicks only
  // the button that has the focus (keyPressEvent).
  bouton->setAutoDefault(false);
  bouton->setDefault(false);
  bouton->setGeometry(RectTwips(gauche, haut, largeur, hauteur, echelle_));
  return bouton;
}

void DialogueOptions::Remplir(QComboBox* liste, const QStringList& entrees) {
  liste->clear();
  liste->addItems(entrees);
  liste->setCurrentIndex(0);
}

void DialogueOptions::Afficher() { MontrerFormulaire(*this, charge_); }

void DialogueOptions::btnAbandonner_Click() { hide(); }

void DialogueOptions::closeEvent(QCloseEvent* evenement) {
  // Closed from the title bar: the dialog is discarded with its choices.
  charge_ = false;
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

// ---------------------------------------------------------------------------

frmConvertirPtValEnPtPrecFiab::frmConvertirPtValEnPtPrecFiab(ReglagesExecution& reglages, FinProgramme& fin,
                                                             QWidget* parent)
    : DialogueOptions(reglages, fin, parent, QStringLiteral("Convertir fichier de points Val en points Préc/Fiab"),
                      6855, 1485) {
  setObjectName(QStringLiteral("frmConvertirPtValEnPtPrecFiab"));
  btnConvertir_ = NouveauBouton("btnConvertir", QStringLiteral("Convertir"), 5520, 360, 1215, 375);
  auto* btnAbandonner = NouveauBouton("btnAbandonner", QStringLiteral("Abandonner"), 5520, 960, 1215, 375);
  NouvelleEtiquette("lblEchelle", QStringLiteral("Echelle du plan:"), 1320, 360, 1212, 252);
  lstEchelle_ = NouvelleListe("lstEchelle", 2640, 360, 1935);
  NouvelleEtiquette("lblTheme", kTexteTheme, 120, 720, 2412, 252);
  lstTheme_ = NouvelleListe("lstTheme", 2640, 720, 1935);
  setTabOrder(btnConvertir_, btnAbandonner);
  setTabOrder(btnAbandonner, lstEchelle_);
  setTabOrder(lstEchelle_, lstTheme_);

  connect(btnConvertir_, &QPushButton::clicked, this, &frmConvertirPtValEnPtPrecFiab::btnConvertir_Click);
  connect(btnAbandonner, &QPushButton::clicked, this, &DialogueOptions::btnAbandonner_Click);
  connect(lstEchelle_, &QComboBox::currentIndexChanged, this, &frmConvertirPtValEnPtPrecFiab::lstEchelle_Click);
  connect(lstTheme_, &QComboBox::currentIndexChanged, this, &frmConvertirPtValEnPtPrecFiab::lstTheme_Click);
}

void frmConvertirPtValEnPtPrecFiab::Form_Load() {
  classeEchelle_ = 1;
  Remplir(lstEchelle_, {QStringLiteral("250"), QStringLiteral("500"), QStringLiteral("1000"),
                        QStringLiteral("2000"), QStringLiteral("4000"), QStringLiteral("5000")});
  groupeTheme_ = 2;
  Remplir(lstTheme_, {QStringLiteral("CS"), QStringLiteral("OD")});
  btnConvertir_->setFocus();
}

void frmConvertirPtValEnPtPrecFiab::lstEchelle_Click() {
  if (const int16_t classe = ClasseEchellePourTexte(lstEchelle_->currentText()); classe != 0) {
    classeEchelle_ = classe;
  }
}

void frmConvertirPtValEnPtPrecFiab::lstTheme_Click() {
  if (const int32_t groupe = GroupeThemePourTexte(lstTheme_->currentText()); groupe != 0) groupeTheme_ = groupe;
}

void frmConvertirPtValEnPtPrecFiab::btnConvertir_Click() {
  Convertir([this] { return ConvertirPtValEnPtPrecFiab(reglages_, classeEchelle_, groupeTheme_); });
}

// ---------------------------------------------------------------------------

frmConvertirPtDCEnPtVal::frmConvertirPtDCEnPtVal(ReglagesExecution& reglages, FinProgramme& fin, QWidget* parent)
    : DialogueOptions(reglages, fin, parent, QStringLiteral("Convertir fichier de points DC en points Val"), 6450,
                      1440) {
  setObjectName(QStringLiteral("frmConvertirPtDCEnPtVal"));
  btnConvertir_ = NouveauBouton("btnConvertir", QStringLiteral("Convertir"), 5040, 240, 1215, 375);
  auto* btnAbandonner = NouveauBouton("btnAbandonner", QStringLiteral("Abandonner"), 5040, 840, 1215, 375);
  NouvelleEtiquette("lblTheme", kTexteTheme, 120, 240, 2412, 252);
  lstTheme_ = NouvelleListe("lstTheme", 2640, 240, 1935);
  setTabOrder(btnConvertir_, btnAbandonner);
  setTabOrder(btnAbandonner, lstTheme_);

  connect(btnConvertir_, &QPushButton::clicked, this, &frmConvertirPtDCEnPtVal::btnConvertir_Click);
  connect(btnAbandonner, &QPushButton::clicked, this, &DialogueOptions::btnAbandonner_Click);
  connect(lstTheme_, &QComboBox::currentIndexChanged, this, &frmConvertirPtDCEnPtVal::lstTheme_Click);
}

void frmConvertirPtDCEnPtVal::Form_Load() {
  groupeTheme_ = 2;
  Remplir(lstTheme_, {QStringLiteral("CS"), QStringLiteral("OD")});
  btnConvertir_->setFocus();
}

void frmConvertirPtDCEnPtVal::lstTheme_Click() {
  if (const int32_t groupe = GroupeThemePourTexte(lstTheme_->currentText()); groupe != 0) groupeTheme_ = groupe;
}

void frmConvertirPtDCEnPtVal::btnConvertir_Click() {
  Convertir([this] { return ConvertirPtDCEnPtVal(reglages_, groupeTheme_); });
}

}  // namespace quillon
