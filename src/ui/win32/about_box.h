// frmAPropos on Win32, drawn from its form. OK is both the default and the
// cancel button: Enter and Escape close the box as it does. Closing unloads
// it, and the next showing loads it anew.
#pragma once

#include "ui/seams.h"
#include "ui/win32/window_base.h"

namespace quillon::win32 {

class AProposWin32 : public FormulaireWin32 {
 public:
  AProposWin32(Services& services, HWND proprietaire);
  ~AProposWin32() override;

  // Loads the box (always anew: every close unloads it) and shows it
  // without waiting for it.
  void Afficher();

 protected:
  LRESULT Traiter(UINT message, WPARAM wparam, LPARAM lparam) override;
  void Detruite() override;

 private:
  void Form_Load();
  void Liberer();

  Services& services_;
  HFONT grande_ = nullptr;
  HICON icone_ = nullptr;
};

}  // namespace quillon::win32
