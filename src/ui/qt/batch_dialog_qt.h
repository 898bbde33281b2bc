// frmControlerLot on Qt: the batch dialog drawn from its form and handed to
// its logic, which keeps the choices from one batch to the next. Shown
// modal: the batch starts when it is closed with Contrôler.
#pragma once

#include <map>
#include <string_view>

#include <QDialog>

#include "ui/batch_dialog.h"
#include "ui/forms.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QRect;

namespace quillon {

class frmControlerLot : public QDialog {
  Q_OBJECT

 public:
  frmControlerLot(LogiqueDialogueLot& logique, QWidget* parent);

 public slots:
  void btnControler_Click();
  void btnDossier_Click();

 private:
  // A control of the form at its place, tied to the logic.
  QWidget* Creer(const Controle& c, const QRect& place);
  // Every control shown again as the choices stand.
  void Montrer();

  LogiqueDialogueLot& logique_;
  std::map<std::string_view, QComboBox*> listes_;
  std::map<std::string_view, QCheckBox*> cases_;
  QLabel* lblDossier_ = nullptr;
};

}  // namespace quillon
