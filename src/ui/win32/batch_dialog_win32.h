// The batch dialog (frmControlerLot) on Win32, drawn from its form and
// handed to its logic. Modal: the main window is disabled while it shows,
// and MontrerModal returns once Contrôler or Abandonner closed it. Escape
// and the title bar abandon; Contrôler is the default button.
#pragma once

#include "ui/batch_dialog.h"
#include "ui/win32/window_base.h"

namespace quillon::win32 {

class DialogueLotWin32 : public FormulaireWin32 {
 public:
  DialogueLotWin32(LogiqueDialogueLot& logique, HWND proprietaire);

  // Shows the dialog and runs its messages until it closes: true for
  // Contrôler.
  bool MontrerModal();

 protected:
  LRESULT Traiter(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void Remplir();
  // The controls as the choices stand.
  void Synchroniser();
  void Commande(int id, int code, HWND source);
  void Fermer(bool controler);

  LogiqueDialogueLot& logique_;
  bool fini_ = false;
  bool controler_ = false;
};

}  // namespace quillon::win32
