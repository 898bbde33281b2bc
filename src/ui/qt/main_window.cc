#include "ui/qt/main_window.h"

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QUrl>

#include "ui/qt/about_box.h"
#include "ui/qt/app_icon.h"
#include "ui/qt/batch_dialog_qt.h"
#include "ui/qt/form_layout.h"
#include "ui/qt/option_dialogs.h"
#include "ui/qt/printing.h"
#include "ui/qt/workbench_view.h"

namespace quillon {
namespace {

// The client area at 96 dpi: room for the table, the picture and its lists.
constexpr int kLargeurAtelier = 960, kHauteurAtelier = 640;

// The local files and folders of a drop.
QStringList CheminsDeposes(const QMimeData* donnees) {
  QStringList chemins;
  if (donnees == nullptr || !donnees->hasUrls()) return chemins;
  for (const QUrl& url : donnees->urls()) {
    if (url.isLocalFile()) chemins.push_back(url.toLocalFile());
  }
  return chemins;
}

}  // namespace

frmQuillon::frmQuillon(ReglagesExecution& reglages, Services& services, QWidget* parent)
    : QMainWindow(parent), services_(services), logique_(reglages, services, *this) {
  setObjectName(QStringLiteral("frmQuillon"));
  setWindowTitle(TexteQt(Traduire(kTitreQuillon)));
  setWindowIcon(QIcon(IconeApplication()));

  QMenu *menu = nullptr, *sousMenu = nullptr;
  auto* langues = new QActionGroup(this);
  const Commande langue = CommandeLangue(services.preferences);
  for (const EntreeMenu& entree : MenusQuillon()) {
    if (entree.niveau == 0) {
      menu = menuBar()->addMenu(TexteQt(entree.texte));
      menu->setObjectName(TexteQt(entree.nom));
    } else if (entree.texte == "-") {
      menu->addSeparator()->setObjectName(TexteQt(entree.nom));
    } else if (entree.niveau == 1 && entree.commande == Commande::Aucune) {
      sousMenu = menu->addMenu(TexteQt(entree.texte));
      sousMenu->setObjectName(TexteQt(entree.nom));
    } else {
      // No access key, no shortcut, and kept where it is on every platform.
      QAction* action = (entree.niveau == 2 ? sousMenu : menu)->addAction(TexteQt(entree.texte));
      if (entree.niveau == 2) {  // the languages: one checked
        action->setCheckable(true);
        action->setChecked(entree.commande == langue);
        langues->addAction(action);
      }
      action->setObjectName(TexteQt(entree.nom));
      action->setMenuRole(QAction::NoRole);
      action->setEnabled(entree.actifAuDepart);
      const Commande commande = entree.commande;
      connect(action, &QAction::triggered, this, [this, commande] {
        // Printing is the view's: the logic only makes the pages.
        if (commande == Commande::MettreEnPage) return mnuMettreEnPage_Click();
        if (commande == Commande::Imprimer) return mnuImprimer_Click();
        logique_.Commander(commande);
      });
      entrees_[entree.nom] = action;
    }
  }

  // The client area, below the menu bar: the workbench.
  atelier_ = new VueAtelierQt(logique_.Travail(), this);
  setCentralWidget(atelier_);
  setAcceptDrops(true);
  const double echelle = EchelleEcran(this);
  resize(int(kLargeurAtelier * echelle), int(kHauteurAtelier * echelle) + menuBar()->sizeHint().height());
}

frmQuillon::~frmQuillon() = default;

void frmQuillon::ActiverMenusFichier(bool actifs) {
  entrees_.at("mnuFermer")->setEnabled(actifs);
  entrees_.at("mnuEnregistrerSous")->setEnabled(actifs);
}

void frmQuillon::MontrerDialogue(LogiqueOptions& dialogue) {
  DialogueOptions* vue = nullptr;
  if (dialogue.Genre() == Dialogue::ValPrecFiab) {
    if (dlgValPrecFiab_ == nullptr) dlgValPrecFiab_ = new frmConvertirPtValEnPtPrecFiab(dialogue, this);
    vue = dlgValPrecFiab_;
  } else {
    if (dlgDCVal_ == nullptr) dlgDCVal_ = new frmConvertirPtDCEnPtVal(dialogue, this);
    vue = dlgDCVal_;
  }
  vue->Afficher();
}

void frmQuillon::MontrerAPropos() {
  if (aPropos_ == nullptr) aPropos_ = new frmAPropos(services_, this);
  aPropos_->Afficher();
}

bool frmQuillon::MontrerDialogueLot(LogiqueDialogueLot& dialogue) {
  frmControlerLot boite(dialogue, this);
  return boite.exec() == QDialog::Accepted;
}

void frmQuillon::Rafraichir(unsigned parties) {
  if (atelier_ != nullptr) atelier_->Rafraichir(parties);
  if (parties & kPartieActions) {
    const bool fichier = logique_.Travail().FichierActif();
    entrees_.at("mnuMettreEnPage")->setEnabled(fichier);
    entrees_.at("mnuImprimer")->setEnabled(fichier);
  }
}

void frmQuillon::mnuMettreEnPage_Click() {
  if (!imprimante_) imprimante_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
  QPageSetupDialog dialogue(imprimante_.get(), this);
  dialogue.exec();
}

void frmQuillon::mnuImprimer_Click() {
  if (!logique_.Travail().FichierActif()) return;
  if (!imprimante_) imprimante_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
  QPrintDialog dialogue(imprimante_.get(), this);
  dialogue.setOption(QAbstractPrintDialog::PrintPageRange, false);
  if (dialogue.exec() == QDialog::Accepted) ImprimerSur(*imprimante_);
}

bool frmQuillon::ImprimerSur(QPrinter& imprimante) {
  const Atelier& atelier = logique_.Travail();
  const std::optional<std::size_t> rang = atelier.RangChoisi();
  if (!atelier.FichierActif() || !rang) return false;
  const QSizeF zone = ZoneImprimable(imprimante);
  PeindrePages(imprimante, MettreEnPages(atelier.Table().Ligne(*rang), *atelier.Montre(), atelier.Vue(),
                                         atelier.LigneChoisie(), zone.width(), zone.height()));
  return true;
}

void frmQuillon::Deposer(const QStringList& chemins) {
  std::vector<std::string> natifs;
  for (const QString& chemin : chemins) natifs.push_back(QFile::encodeName(chemin).toStdString());
  if (natifs.empty()) return;
  QMetaObject::invokeMethod(this, [this, natifs] { logique_.Deposer(natifs); }, Qt::QueuedConnection);
}

void frmQuillon::dragEnterEvent(QDragEnterEvent* evenement) {
  if (!CheminsDeposes(evenement->mimeData()).isEmpty()) evenement->acceptProposedAction();
}

void frmQuillon::dropEvent(QDropEvent* evenement) {
  const QStringList chemins = CheminsDeposes(evenement->mimeData());
  if (chemins.isEmpty()) return;
  evenement->acceptProposedAction();
  Deposer(chemins);
}

// From any thread: a queued call, run by this window's thread.
void frmQuillon::Reveiller() {
  QMetaObject::invokeMethod(this, [this] { logique_.Travail().TraiterEvenements(); }, Qt::QueuedConnection);
}

void frmQuillon::closeEvent(QCloseEvent* evenement) {
  if (!logique_.Form_QueryUnload()) {
    evenement->ignore();
    return;
  }
  evenement->accept();
  logique_.Form_Unload();
}

}  // namespace quillon
