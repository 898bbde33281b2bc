// A window of the Win32 front end: one window class for all, each window's
// messages handed to its object.
#pragma once

#include <windows.h>

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

}  // namespace quillon::win32
