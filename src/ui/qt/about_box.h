// frmAPropos on Qt, drawn from its form: names the program, its version and
// purpose, carries the disclaimer, and starts the System Information tool.
//
// OK is both the default and the cancel button: Enter and Escape close the
// box as it does. Closing unloads it, and the next showing loads it anew.
#pragma once

#include <QDialog>

#include "ui/seams.h"

namespace quillon {

class frmAPropos : public QDialog {
  Q_OBJECT

 public:
  frmAPropos(Services& services, QWidget* parent);

  // Shows the box without waiting for it, loading it first when it is not
  // loaded.
  void Afficher();
  bool Charge() const { return charge_; }

 public slots:
  void Form_Load();
  void cmdOK_Click() { close(); }
  void cmdSysInfo_Click();

 protected:
  void paintEvent(QPaintEvent* evenement) override;
  void done(int resultat) override;

 private:
  Services& services_;
  double echelle_;
  bool charge_ = false;
};

}  // namespace quillon
