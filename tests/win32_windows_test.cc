// The Win32 windows over the fakes, created for real and driven through
// window messages as a user's clicks and keys reach them, for the scenarios
// of window_views_test.cc. Runs under wine (make test-windows).
#include <windows.h>

#include <gtest/gtest.h>

#include "ui/win32/about_box.h"
#include "ui/win32/main_window.h"
#include "ui/win32/option_dialogs.h"
#include "ui/win32/win32_util.h"
#include "window_fakes.h"

namespace quillon::test {

struct PiloteWin32 : Pilote {
  win32::FenetreQuillonWin32 fenetre{reglages, services};

  PiloteWin32() {
    EXPECT_TRUE(fenetre.Creer());
    affichage.DefinirParent(fenetre.Handle());
    ::ShowWindow(fenetre.Handle(), SW_SHOWNORMAL);
  }
  win32::FormulaireWin32* Forme(const std::string& nom) {
    if (nom == "frmAPropos") return fenetre.APropos();
    return fenetre.VueDialogue(nom == FormulaireDCVal().nom ? Dialogue::DCVal : Dialogue::ValPrecFiab);
  }
  HWND Handle(const std::string& forme) {
    if (forme == "frmQuillon") return fenetre.Handle();
    return Forme(forme) != nullptr ? Forme(forme)->Handle() : nullptr;
  }
  HWND Controle(const std::string& forme, const std::string& nom) { return Forme(forme)->Controle(nom); }

  LogiqueQuillon& Logique() override { return fenetre.Logique(); }
  void Menu(Commande commande) override {
    ::SendMessageW(fenetre.Handle(), WM_COMMAND, MAKEWPARAM(win32::IdCommande(commande), 0), 0);
  }
  bool Coche(Commande commande) override {
    const UINT etat = ::GetMenuState(::GetMenu(fenetre.Handle()), win32::IdCommande(commande), MF_BYCOMMAND);
    return etat != static_cast<UINT>(-1) && (etat & MF_CHECKED) != 0;
  }
  bool Actif(Commande commande) override {
    const UINT etat = ::GetMenuState(::GetMenu(fenetre.Handle()), win32::IdCommande(commande), MF_BYCOMMAND);
    return etat != static_cast<UINT>(-1) && (etat & (MF_GRAYED | MF_DISABLED)) == 0;
  }
  bool Visible(const std::string& forme) override { return ::IsWindowVisible(Handle(forme)) != FALSE; }
  std::string Texte(const std::string& forme, const std::string& controle) override {
    wchar_t texte[256] = {};
    ::GetWindowTextW(controle.empty() ? Handle(forme) : Controle(forme, controle), texte, 256);
    return Utf8(texte);
  }
  bool AFocus(const std::string& forme, const std::string& controle) override {
    return ::GetFocus() == Controle(forme, controle);
  }
  void Cliquer(const std::string& forme, const std::string& bouton) override {
    ::SendMessageW(Controle(forme, bouton), BM_CLICK, 0, 0);
  }
  // What the dialog manager sends for Enter away from a button, and for Escape.
  void Frapper(const std::string& forme, const std::string&, Touche touche) override {
    ::SendMessageW(Handle(forme), WM_COMMAND, touche == Touche::Echap ? IDCANCEL : IDOK, 0);
  }
  // What a user's pick in a drop-down list sends.
  void Choisir(const std::string& forme, const std::string& nom, int index) override {
    const HWND liste = Controle(forme, nom);
    ::SendMessageW(liste, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    ::SendMessageW(Handle(forme), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(liste), CBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(liste));
  }
  int Selection(const std::string& forme, const std::string& liste) override {
    return static_cast<int>(::SendMessageW(Controle(forme, liste), CB_GETCURSEL, 0, 0));
  }
  void FermerParLaBarre(const std::string& forme) override { ::SendMessageW(Handle(forme), WM_CLOSE, 0, 0); }
};

std::unique_ptr<Pilote> NouveauPilote() { return std::make_unique<PiloteWin32>(); }

}  // namespace quillon::test
