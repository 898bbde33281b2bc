#include "ui/qt/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>

#include "ui/qt/about_box.h"
#include "ui/qt/app_icon.h"
#include "ui/qt/form_layout.h"
#include "ui/qt/option_dialogs.h"

namespace quillon {

frmQuillon::frmQuillon(ReglagesExecution& reglages, Services& services, QWidget* parent)
    : QMainWindow(parent), services_(services), logique_(reglages, services, *this) {
  setObjectName(QStringLiteral("frmQuillon"));
  setWindowTitle(TexteQt(kTitreQuillon));
  setWindowIcon(QIcon(IconeApplication()));

  QMenu* menu = nullptr;
  for (const EntreeMenu& entree : MenusQuillon()) {
    if (entree.niveau == 0) {
      menu = menuBar()->addMenu(TexteQt(entree.texte));
      menu->setObjectName(TexteQt(entree.nom));
    } else if (entree.texte == "-") {
      menu->addSeparator()->setObjectName(TexteQt(entree.nom));
    } else {
      // No access key, no shortcut, and kept where it is on every platform.
      QAction* action = menu->addAction(TexteQt(entree.texte));
      action->setObjectName(TexteQt(entree.nom));
      action->setMenuRole(QAction::NoRole);
      action->setEnabled(entree.actifAuDepart);
      const Commande commande = entree.commande;
      connect(action, &QAction::triggered, this, [this, commande] { logique_.Commander(commande); });
      entrees_[entree.nom] = action;
    }
  }

  // The client area, below the menu bar.
  auto* client = new QWidget(this);
  client->setObjectName(QStringLiteral("client"));
  setCentralWidget(client);
  const QSize taille = TailleTwips(kLargeurQuillon, kHauteurQuillon, EchelleEcran(this));
  resize(taille.width(), taille.height() + menuBar()->sizeHint().height());
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

bool frmQuillon::MontrerDialogueLot(LogiqueDialogueLot&) { return false; }

void frmQuillon::Rafraichir(unsigned) {}

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
