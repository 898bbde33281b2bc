// frmQuillon, the main window: the user picks a source and a target through
// the standard open and save dialogs, and the window starts the conversion
// that the kinds of the two files call for, directly for a precision source,
// through an option dialog for a value or a DC source.
#pragma once

#include <QMainWindow>

#include "conversion/run_settings.h"
#include "ui/seams.h"

class QAction;

namespace quillon {

class frmAPropos;
class frmConvertirPtDCEnPtVal;
class frmConvertirPtValEnPtPrecFiab;

class frmQuillon : public QMainWindow {
  Q_OBJECT

 public:
  frmQuillon(ReglagesExecution& reglages, Services& services, QWidget* parent = nullptr);
  ~frmQuillon() override;

  // The dialogs, once the window has shown them (null before).
  frmConvertirPtValEnPtPrecFiab* DialogueValPrecFiab() const { return dlgValPrecFiab_; }
  frmConvertirPtDCEnPtVal* DialogueDCVal() const { return dlgDCVal_; }
  frmAPropos* BoiteAPropos() const { return aPropos_; }

 public slots:
  void mnuOuvrir_Click();
  void mnuFermer_Click();
  void mnuEnregistrerSous_Click();
  void mnuQuitter_Click();
  void mnuAPropos_Click();

 protected:
  // Closing the window ends the program as Quitter does, so that no dialog
  // left open keeps it running.
  void closeEvent(QCloseEvent* evenement) override;

 private:
  void ActiverMenusFichier(bool actifs);
  // Ends the program when a run met a fatal error (which it has shown).
  void Conclure(bool termine);

  ReglagesExecution& reglages_;
  Services& services_;
  QAction* mnuFermer_;
  QAction* mnuEnregistrerSous_;
  frmConvertirPtValEnPtPrecFiab* dlgValPrecFiab_ = nullptr;
  frmConvertirPtDCEnPtVal* dlgDCVal_ = nullptr;
  frmAPropos* aPropos_ = nullptr;
};

}  // namespace quillon
