// The two option dialogs on Qt, drawn from their forms and handed to their
// window logic, which keeps their choices and starts their conversions.
//
// Neither button is the default or the cancel button: Escape does nothing,
// and Enter clicks a button only when it has the focus.
#pragma once

#include <cstdint>
#include <map>
#include <string_view>

#include <QDialog>

#include "ui/window_logic.h"

class QComboBox;

namespace quillon {

class DialogueOptions : public QDialog {
  Q_OBJECT

 public:
  // Shows the dialog without waiting for it, loading it first when it is not
  // loaded.
  void Afficher();
  bool Charge() const { return logique_.Charge(); }
  int16_t ClasseEchelle() const { return logique_.ClasseEchelle(); }
  int32_t GroupeTheme() const { return logique_.GroupeTheme(); }

 public slots:
  // Initial choices, lists filled anew with their first entries selected.
  void Form_Load();
  void btnConvertir_Click();
  void btnAbandonner_Click() { hide(); }

 protected:
  DialogueOptions(LogiqueOptions& logique, QWidget* parent);

  void closeEvent(QCloseEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;

 private:
  LogiqueOptions& logique_;
  std::map<std::string_view, QComboBox*> listes_;
};

class frmConvertirPtValEnPtPrecFiab : public DialogueOptions {
  Q_OBJECT

 public:
  frmConvertirPtValEnPtPrecFiab(LogiqueOptions& logique, QWidget* parent) : DialogueOptions(logique, parent) {}
};

class frmConvertirPtDCEnPtVal : public DialogueOptions {
  Q_OBJECT

 public:
  frmConvertirPtDCEnPtVal(LogiqueOptions& logique, QWidget* parent) : DialogueOptions(logique, parent) {}
};

}  // namespace quillon
