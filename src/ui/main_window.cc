#include "ui/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>

#include "conversion/conversions.h"
#include "ui/about_box.h"
#include "ui/app_icon.h"
#include "ui/form_layout.h"
#include "ui/option_dialogs.h"

namespace quillon {
namespace {

const QString kFiltreOuvrir = QStringLiteral(
    "Points avec valeur (*.ptv)|*.ptv|Points avec précisions (*.ptp)|*.ptp|Points au format DC (*.pts)|*.pts");
const QString kFiltreVersPrecFiab = QStringLiteral("Points avec précision (*.ptp)|*.ptp");
const QString kFiltreDepuisPrecFiab =
    QStringLiteral("Points avec valeur (*.ptv)|*.ptv|Points au format MD01 (*.ptm)|*.ptm");
const QString kFiltreVersValeur = QStringLiteral("Points avec valeur (*.ptv)|*.ptv");

// A menu entry: no access key, no shortcut, and kept where it is on every
// platform.
QAction* Entree(QMenu* menu, const char* nom, const QString& texte, bool actif) {
  QAction* action = menu->addAction(texte);
  action->setObjectName(QLatin1String(nom));
  action->setMenuRole(QAction::NoRole);
  action->setEnabled(actif);
  return action;
}

void Barre(QMenu* menu, const char* nom) { menu->addSeparator()->setObjectName(QLatin1String(nom)); }

}  // namespace

frmQuillon::frmQuillon(ReglagesExecution& reglages, Services& services, QWidget* parent)
    : QMainWindow(parent), reglages_(reglages), services_(services) {
  setObjectName(QStringLiteral("frmQuillon"));
  setWindowTitle(QStringLiteral("Convertir fichier de points aux formats KQ"));
  setWindowIcon(QIcon(IconeApplication()));

  QMenu* mnuFichier = menuBar()->addMenu(QStringLiteral("Fichier"));
  mnuFichier->setObjectName(QStringLiteral("mnuFichier"));
  QAction* mnuOuvrir = Entree(mnuFichier, "mnuOuvrir", QStringLiteral("Ouvrir..."), true);
  mnuFermer_ = Entree(mnuFichier, "mnuFermer", QStringLiteral("Fermer"), false);
  Barre(mnuFichier, "barre1");
  mnuEnregistrerSous_ = Entree(mnuFichier, "mnuEnregistrerSous", QStringLiteral("Enregistrer sous..."), false);
  Barre(mnuFichier, "barre2");
  Entree(mnuFichier, "mnuMettreEnPage", QStringLiteral("Mise en page..."), false);
  Entree(mnuFichier, "mnuImprimer", QStringLiteral("Imprimer..."), false);
  Barre(mnuFichier, "barre3");
  QAction* mnuQuitter = Entree(mnuFichier, "mnuQuitter", QStringLiteral("Quitter"), true);
  QMenu* aide = menuBar()->addMenu(QStringLiteral("?"));
  aide->setObjectName(QStringLiteral("Aide"));
  QAction* mnuAPropos = Entree(aide, "mnuAPropos", QStringLiteral("A Propos de..."), true);

  connect(mnuOuvrir, &QAction::triggered, this, &frmQuillon::mnuOuvrir_Click);
  connect(mnuFermer_, &QAction::triggered, this, &frmQuillon::mnuFermer_Click);
  connect(mnuEnregistrerSous_, &QAction::triggered, this, &frmQuillon::mnuEnregistrerSous_Click);
  connect(mnuQuitter, &QAction::triggered, this, &frmQuillon::mnuQuitter_Click);
  connect(mnuAPropos, &QAction::triggered, this, &frmQuillon::mnuAPropos_Click);

  // The client area, below the menu bar, is 7665 x 3105 twips.
  auto* client = new QWidget(this);
  client->setObjectName(QStringLiteral("client"));
  setCentralWidget(client);
  const QSize taille = TailleTwips(7665, 3105, EchelleEcran(this));
  resize(taille.width(), taille.height() + menuBar()->sizeHint().height());
}

frmQuillon::~frmQuillon() = default;

void frmQuillon::ActiverMenusFichier(bool actifs) {
  mnuFermer_->setEnabled(actifs);
  mnuEnregistrerSous_->setEnabled(actifs);
}

void frmQuillon::Conclure(bool termine) {
  if (!termine) services_.fin.Terminer();
}

void frmQuillon::mnuOuvrir_Click() {
  const std::optional<FichierChoisi> choix =
      services_.dialogues.Ouvrir(this, QStringLiteral("Ouvrir un fichier points"), kFiltreOuvrir, 1);
  if (!choix) return;

  reglages_.DefinirSource(choix->nom);
  reglages_.journal.NbErreursLecture = 0;
  reglages_.journal.NbErreursEcriture = 0;
  // The kind follows the filter selected, not the extension of the name.
  switch (choix->indexFiltre) {
    case 1: reglages_.TypeFichierSource = TypeFichier::Valeur; break;
    case 2: reglages_.TypeFichierSource = TypeFichier::PrecFiab; break;
    case 3: reglages_.TypeFichierSource = TypeFichier::DC; break;
    default: break;
  }
  ActiverMenusFichier(true);
}

void frmQuillon::mnuEnregistrerSous_Click() {
  QString filtre;
  switch (reglages_.TypeFichierSource) {
    case TypeFichier::Valeur: filtre = kFiltreVersPrecFiab; break;
    case TypeFichier::PrecFiab: filtre = kFiltreDepuisPrecFiab; break;
    case TypeFichier::DC: filtre = kFiltreVersValeur; break;
    case TypeFichier::Aucun: return;
  }
  const std::optional<FichierChoisi> choix = services_.dialogues.EnregistrerSous(
      this, QStringLiteral("Enregistrer le fichier de points sous"), filtre, 1);
  if (!choix) return;

  reglages_.FichierCible.Nom = choix->nom;
  switch (reglages_.TypeFichierSource) {
    case TypeFichier::Valeur:
      if (dlgValPrecFiab_ == nullptr) dlgValPrecFiab_ = new frmConvertirPtValEnPtPrecFiab(reglages_, services_.fin, this);
      dlgValPrecFiab_->Afficher();
      break;
    case TypeFichier::PrecFiab:
      // The target format follows the filter selected, not the extension.
      if (choix->indexFiltre == 1) {
        Conclure(ConvertirPtPrecFiabEnPtVal(reglages_));
      } else if (choix->indexFiltre == 2) {
        Conclure(ConvertirPtPrecFiabEnPtMD01(reglages_));
      }
      break;
    case TypeFichier::DC:
      if (dlgDCVal_ == nullptr) dlgDCVal_ = new frmConvertirPtDCEnPtVal(reglages_, services_.fin, this);
      dlgDCVal_->Afficher();
      break;
    case TypeFichier::Aucun: break;
  }
}

void frmQuillon::mnuFermer_Click() { ActiverMenusFichier(false); }

void frmQuillon::mnuQuitter_Click() { services_.fin.Terminer(); }

void frmQuillon::mnuAPropos_Click() {
  if (aPropos_ == nullptr) aPropos_ = new frmAPropos(services_, this);
  aPropos_->Afficher();
}

void frmQuillon::closeEvent(QCloseEvent* evenement) {
  evenement->accept();
  services_.fin.Terminer();
}

}  // namespace quillon
