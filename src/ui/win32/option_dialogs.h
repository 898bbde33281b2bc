// The option dialogs on Win32: fixed-size, modeless windows owned by the
// main window (no task-bar entry), drawn from their forms and handed to their
// window logic.
//
// Neither button is the default or the cancel button: Escape does nothing,
// and Enter clicks a button only when it has the focus.
#pragma once

#include "ui/win32/window_base.h"
#include "ui/window_logic.h"

namespace quillon::win32 {

class DialogueOptionsWin32 : public FormulaireWin32 {
 public:
  DialogueOptionsWin32(LogiqueOptions& logique, HWND proprietaire);

  // Shows the dialog without waiting for it, in front: created and loaded
  // first when it is not loaded (the first time, and after a title-bar
  // close).
  void Afficher();
  LogiqueOptions& Logique() { return logique_; }

 protected:
  LRESULT Traiter(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void Form_Load();
  void Cliquer(int id);

  LogiqueOptions& logique_;
};

// Enter on a focused push button clicks it, as the dialog manager expects
// from DM_GETDEFID; without one, nothing is the default.
LRESULT BoutonParDefaut(HWND fenetre, int idSinon);

}  // namespace quillon::win32
