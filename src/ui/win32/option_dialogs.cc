#include "ui/win32/option_dialogs.h"

#include <commctrl.h>

#include "ui/win32/win32_util.h"

namespace quillon::win32 {

LRESULT BoutonParDefaut(HWND fenetre, int idSinon) {
  const HWND focus = ::GetFocus();
  if (focus != nullptr && ::GetParent(focus) == fenetre &&
      (::SendMessageW(focus, WM_GETDLGCODE, 0, 0) & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0) {
    return MAKELRESULT(::GetDlgCtrlID(focus), DC_HASDEFID);
  }
  return idSinon != 0 ? MAKELRESULT(idSinon, DC_HASDEFID) : 0;
}

DialogueOptionsWin32::DialogueOptionsWin32(LogiqueOptions& logique, HWND proprietaire)
    : FormulaireWin32(logique.Forme(), proprietaire), logique_(logique) {}

void DialogueOptionsWin32::Afficher() {
  if (Handle() == nullptr || !logique_.Charge()) {
    if (Handle() == nullptr && !CreerFormulaire(logique_.Forme().titre, POINT{40, 60})) return;
    Form_Load();
  }
  ::ShowWindow(Handle(), SW_SHOW);
  ::SetForegroundWindow(Handle());
}

void DialogueOptionsWin32::Form_Load() {
  logique_.Form_Load();
  // Each list filled anew, its first entry selected: that selection is
  // reported as the list's click.
  for (const quillon::Controle& c : logique_.Forme().controles) {
    if (c.genre != GenreControle::Liste) continue;
    const HWND liste = Controle(c.nom);
    ::SendMessageW(liste, CB_RESETCONTENT, 0, 0);
    for (std::string_view entree : EntreesListe(c.nom)) {
      ::SendMessageW(liste, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Large(entree).c_str()));
    }
    ::SendMessageW(liste, CB_SETCURSEL, 0, 0);
    ::SendMessageW(Handle(), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(liste), CBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(liste));
  }
  ::SetFocus(Controle("btnConvertir"));
}

void DialogueOptionsWin32::Cliquer(int id) {
  if (::GetDlgItem(Handle(), id) == Controle("btnConvertir")) {
    ::ShowWindow(Handle(), SW_HIDE);
    logique_.btnConvertir_Click();
  } else if (::GetDlgItem(Handle(), id) == Controle("btnAbandonner")) {
    ::ShowWindow(Handle(), SW_HIDE);
  }
}

LRESULT DialogueOptionsWin32::Traiter(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_COMMAND: {
      const int id = LOWORD(wparam);
      const HWND source = reinterpret_cast<HWND>(lparam);
      if (HIWORD(wparam) == CBN_SELCHANGE) {
        if (source == Controle("lstEchelle")) logique_.lstEchelle_Click(TexteSelection(source));
        if (source == Controle("lstTheme")) logique_.lstTheme_Click(TexteSelection(source));
      } else if (HIWORD(wparam) == BN_CLICKED && id != IDOK && id != IDCANCEL) {
        Cliquer(id);
      }
      return 0;
    }
    case DM_GETDEFID: return BoutonParDefaut(Handle(), 0);
    case WM_CLOSE:
      // Closed from the title bar: the dialog goes with its choices.
      logique_.Form_Unload();
      ::DestroyWindow(Handle());
      return 0;
    default: return FormulaireWin32::Traiter(message, wparam, lparam);
  }
}

}  // namespace quillon::win32
