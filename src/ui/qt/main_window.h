// frmQuillon on Qt: the main window's menus, drawn from the menu table and
// handed to the window logic, over the workbench (VueAtelierQt). Files and
// folders dropped anywhere on the window go to the workbench.
#pragma once

#include <map>
#include <memory>
#include <string_view>

#include <QMainWindow>
#include <QStringList>

#include "conversion/run_settings.h"
#include "ui/seams.h"
#include "ui/window_logic.h"

class QAction;
class QPrinter;

namespace quillon {

class DialogueOptions;
class frmAPropos;
class frmConvertirPtDCEnPtVal;
class frmConvertirPtValEnPtPrecFiab;
class VueAtelierQt;

class frmQuillon : public QMainWindow, private VueQuillon {
  Q_OBJECT

 public:
  frmQuillon(ReglagesExecution& reglages, Services& services, QWidget* parent = nullptr);
  ~frmQuillon() override;

  LogiqueQuillon& Logique() { return logique_; }
  // The dialogs, once the window has shown them (null before).
  frmConvertirPtValEnPtPrecFiab* DialogueValPrecFiab() const { return dlgValPrecFiab_; }
  frmConvertirPtDCEnPtVal* DialogueDCVal() const { return dlgDCVal_; }
  frmAPropos* BoiteAPropos() const { return aPropos_; }
  VueAtelierQt* VueTravail() const { return atelier_; }

  // Files and folders given to the workbench as a drop, once the event
  // under way is done (a drop waits for nothing, the batch dialog does).
  void Deposer(const QStringList& chemins);
  // The file shown printed on `imprimante` as it is set up: its summary
  // and verdict, its picture at the window's view, its rejected lines and
  // checks. False when no file is shown.
  bool ImprimerSur(QPrinter& imprimante);

 public slots:
  void mnuOuvrir_Click() { logique_.mnuOuvrir_Click(); }
  void mnuFermer_Click() { logique_.mnuFermer_Click(); }
  void mnuEnregistrerSous_Click() { logique_.mnuEnregistrerSous_Click(); }
  void mnuQuitter_Click() { logique_.mnuQuitter_Click(); }
  void mnuAPropos_Click() { logique_.mnuAPropos_Click(); }
  // The paper and its orientation, kept for the next printing.
  void mnuMettreEnPage_Click();
  void mnuImprimer_Click();

 protected:
  void closeEvent(QCloseEvent* evenement) override;
  void dragEnterEvent(QDragEnterEvent* evenement) override;
  void dropEvent(QDropEvent* evenement) override;

 private:
  Parent Fenetre() override { return static_cast<QWidget*>(this); }
  void ActiverMenusFichier(bool actifs) override;
  void MontrerDialogue(LogiqueOptions& dialogue) override;
  void MontrerAPropos() override;
  bool MontrerDialogueLot(LogiqueDialogueLot& dialogue) override;
  void Rafraichir(unsigned parties) override;
  void Reveiller() override;

  Services& services_;
  LogiqueQuillon logique_;
  std::map<std::string_view, QAction*> entrees_;
  frmConvertirPtValEnPtPrecFiab* dlgValPrecFiab_ = nullptr;
  frmConvertirPtDCEnPtVal* dlgDCVal_ = nullptr;
  frmAPropos* aPropos_ = nullptr;
  VueAtelierQt* atelier_ = nullptr;
  std::unique_ptr<QPrinter> imprimante_;  // made at the first printing or page setup
};

// The QWidget behind a window logic's parent.
inline QWidget* WidgetDe(Parent parent) { return static_cast<QWidget*>(parent); }

// A UTF-8 text of the window logic, for Qt.
inline QString TexteQt(std::string_view texte) {
  return QString::fromUtf8(texte.data(), static_cast<qsizetype>(texte.size()));
}

}  // namespace quillon
