// A window of the Win32 front end: one window class for all, each window's
// messages handed to its object.
#pragma once

#include <windows.h>

#include <string_view>

#include "ui/forms.h"

namespace quillon::win32 {

class FenetreWin32 {
 public:
  virtual ~FenetreWin32();
  FenetreWin32(const FenetreWin32&) = delete;
  FenetreWin32& operator=(const FenetreWin32&) = delete;

  HWND Handle() const { return hwnd_; }

 protected:
  FenetreWin32() = default;
  // Creates the window, hidden, with this object behind its messages.
  bool Creer(DWORD style, DWORD styleEtendu, const wchar_t* titre, HWND proprietaire, HMENU menu);
  // A message of the window; DefWindowProc for whatever it leaves.
  virtual LRESULT Traiter(UINT message, WPARAM wparam, LPARAM lparam);
  // Called once the window is gone (WM_NCDESTROY).
  virtual void Detruite() {}

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam);
  HWND hwnd_ = nullptr;
};

// A fixed-size dialog window drawn from a form: caption and close button,
// no minimize or maximize button, owned by the main window (so no task-bar
// entry), its controls in the form's order and places at the DPI of the
// monitor, placed again when the DPI changes.
class FormulaireWin32 : public FenetreWin32 {
 public:
  ~FormulaireWin32() override;
  // A control by its name in the form, or null.
  HWND Controle(std::string_view nom) const;

 protected:
  FormulaireWin32(const Formulaire& forme, HWND proprietaire) : forme_(forme), proprietaire_(proprietaire) {}
  // Creates the window and its controls, hidden, `decalage` pixels from the
  // owner's corner.
  bool CreerFormulaire(std::string_view titre, POINT decalage);
  LRESULT Traiter(UINT message, WPARAM wparam, LPARAM lparam) override;
  UINT Dpi() const { return dpi_; }
  HFONT Police() const { return police_; }

 private:
  const Formulaire& forme_;
  HWND proprietaire_;
  HFONT police_ = nullptr;
  UINT dpi_ = 96;
};

// Moves and sizes the window to the rectangle that WM_DPICHANGED proposes.
void AppliquerRectPropose(HWND fenetre, LPARAM lparam);

// The program's message loop: the active dialog, not the main window, takes
// Tab, Enter and Escape as the dialog manager does. Returns when the
// program's end is asked.
void BoucleMessages(HWND principale);

}  // namespace quillon::win32
