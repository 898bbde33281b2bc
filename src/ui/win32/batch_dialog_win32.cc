#include "ui/win32/batch_dialog_win32.h"

#include "ui/win32/option_dialogs.h"
#include "ui/win32/win32_util.h"

namespace quillon::win32 {

DialogueLotWin32::DialogueLotWin32(LogiqueDialogueLot& logique, HWND proprietaire)
    : FormulaireWin32(FormulaireLot(), proprietaire), logique_(logique) {}

bool DialogueLotWin32::MontrerModal() {
  if (Handle() == nullptr && !CreerFormulaire(FormulaireLot().titre, POINT{60, 60})) return false;
  const HWND principale = ::GetWindow(Handle(), GW_OWNER);
  Remplir();
  Synchroniser();
  ::SendMessageW(Controle("btnControler"), BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
  if (principale != nullptr) ::EnableWindow(principale, FALSE);
  ::ShowWindow(Handle(), SW_SHOW);
  ::SetForegroundWindow(Handle());
  ::SetFocus(Controle("btnControler"));
  fini_ = false;
  MSG message;
  bool quitter = false;
  while (!fini_ && Handle() != nullptr) {
    if (::GetMessageW(&message, nullptr, 0, 0) <= 0) {
      quitter = true;
      break;
    }
    if (::IsDialogMessageW(Handle(), &message)) continue;
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
  // The owner enabled again before the dialog goes, so that it gets the
  // activation back.
  if (principale != nullptr) ::EnableWindow(principale, TRUE);
  if (Handle() != nullptr) ::DestroyWindow(Handle());
  if (quitter) ::PostQuitMessage(static_cast<int>(message.wParam));
  return controler_ && !quitter;
}

void DialogueLotWin32::Remplir() {
  for (const quillon::Controle& c : FormulaireLot().controles) {
    if (c.genre != GenreControle::Liste) continue;
    const HWND liste = Controle(c.nom);
    ::SendMessageW(liste, CB_RESETCONTENT, 0, 0);
    for (std::string_view entree : EntreesListeLot(c.nom)) {
      ::SendMessageW(liste, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Large(entree).c_str()));
    }
  }
}

void DialogueLotWin32::Synchroniser() {
  for (const quillon::Controle& c : FormulaireLot().controles) {
    const HWND controle = Controle(c.nom);
    if (c.genre == GenreControle::Liste) {
      const std::wstring choisie = Large(logique_.Selection(c.nom));
      ::SendMessageW(controle, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(choisie.c_str()));
    } else if (c.genre == GenreControle::Case) {
      ::SendMessageW(controle, BM_SETCHECK, logique_.Coche(c.nom) ? BST_CHECKED : BST_UNCHECKED, 0);
    }
  }
  ::SetWindowTextW(Controle("lblDossier"), Large(logique_.TexteDossier()).c_str());
}

void DialogueLotWin32::Fermer(bool controler) {
  controler_ = controler;
  fini_ = true;
  ::ShowWindow(Handle(), SW_HIDE);
}

void DialogueLotWin32::Commande(int id, int code, HWND source) {
  if (id == IDCANCEL) return Fermer(false);
  if (id == IDOK) source = Controle("btnControler");
  const int index = id >= 1000 ? id - 1000 : -1;
  const auto& controles = FormulaireLot().controles;
  if (source == Controle("btnControler")) {
    if (logique_.btnControler_Click(Handle())) Fermer(true);
  } else if (source == Controle("btnAbandonner")) {
    Fermer(false);
  } else if (source == Controle("btnDossier")) {
    logique_.btnDossier_Click(Handle());
  } else if (code == CBN_SELCHANGE && index >= 0 && index < static_cast<int>(controles.size())) {
    logique_.Liste_Click(controles[std::size_t(index)].nom, TexteSelection(source));
  } else if (code == BN_CLICKED && index >= 0 && index < static_cast<int>(controles.size()) &&
             controles[std::size_t(index)].genre == GenreControle::Case) {
    logique_.Case_Click(controles[std::size_t(index)].nom,
                        ::SendMessageW(source, BM_GETCHECK, 0, 0) == BST_CHECKED);
  } else {
    return;
  }
  if (!fini_) Synchroniser();
}

LRESULT DialogueLotWin32::Traiter(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_COMMAND:
      Commande(LOWORD(wparam), HIWORD(wparam), reinterpret_cast<HWND>(lparam));
      return 0;
    case DM_GETDEFID: return BoutonParDefaut(Handle(), ::GetDlgCtrlID(Controle("btnControler")));
    case WM_CLOSE: Fermer(false); return 0;
    default: return FormulaireWin32::Traiter(message, wparam, lparam);
  }
}

}  // namespace quillon::win32
