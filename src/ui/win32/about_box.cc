#include "ui/win32/about_box.h"

#include <algorithm>

#include "ui/forms.h"
#include "ui/win32/option_dialogs.h"
#include "ui/win32/win32_util.h"
#include "ui/window_logic.h"

namespace quillon::win32 {

AProposWin32::AProposWin32(Services& services, HWND proprietaire)
    : FormulaireWin32(FormulaireAPropos(), proprietaire), services_(services) {}

AProposWin32::~AProposWin32() { Liberer(); }

void AProposWin32::Liberer() {
  if (grande_ != nullptr) ::DeleteObject(grande_);
  if (icone_ != nullptr) ::DestroyIcon(icone_);
  grande_ = nullptr;
  icone_ = nullptr;
}

void AProposWin32::Detruite() { Liberer(); }

void AProposWin32::Afficher() {
  if (Handle() == nullptr) {
    if (!CreerFormulaire("", POINT{60, 40})) return;
    // OK is the default button.
    ::SendMessageW(Controle("cmdOK"), BM_SETSTYLE, BS_DEFPUSHBUTTON, TRUE);
    Form_Load();
  }
  ::ShowWindow(Handle(), SW_SHOW);
  ::SetForegroundWindow(Handle());
}

void AProposWin32::Form_Load() {
  ::SetWindowTextW(Handle(), Large(TexteAPropos("frmAPropos")).c_str());
  for (const quillon::Controle& c : FormulaireAPropos().controles) {
    if (c.genre != GenreControle::Etiquette) continue;
    ::SetWindowTextW(Controle(c.nom), Large(TexteAPropos(c.nom)).c_str());
  }
  // The title in a larger type, the icon at 32 x 32 pixels at 96 DPI.
  LOGFONTW police{};
  ::GetObjectW(Police(), sizeof police, &police);
  police.lfHeight = -::MulDiv(14, static_cast<int>(Dpi()), 72);
  grande_ = ::CreateFontIndirectW(&police);
  ::SendMessageW(Controle("lblTitle"), WM_SETFONT, reinterpret_cast<WPARAM>(grande_), TRUE);
  const int cote = ::MulDiv(32, static_cast<int>(Dpi()), 96);
  icone_ = static_cast<HICON>(
      ::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1), IMAGE_ICON, cote, cote, LR_DEFAULTCOLOR));
  if (icone_ != nullptr) ::SendMessageW(Controle("picIcon"), STM_SETICON, reinterpret_cast<WPARAM>(icone_), 0);
  ::SetFocus(Controle("cmdOK"));
}

LRESULT AProposWin32::Traiter(UINT message, WPARAM wparam, LPARAM lparam) {
  switch (message) {
    case WM_COMMAND: {
      const HWND source = ::GetDlgItem(Handle(), LOWORD(wparam));
      if (LOWORD(wparam) == IDOK || LOWORD(wparam) == IDCANCEL || source == Controle("cmdOK")) {
        ::DestroyWindow(Handle());  // unloaded
      } else if (source == Controle("cmdSysInfo")) {
        StartSysInfo(services_.registre, services_.programmes, services_.messages, Handle());
      }
      return 0;
    }
    case DM_GETDEFID:
      return BoutonParDefaut(Handle(), ::GetDlgCtrlID(Controle("cmdOK")));
    case WM_CLOSE: ::DestroyWindow(Handle()); return 0;
    case WM_PAINT: {
      // The etched rule between the description and the disclaimer.
      PAINTSTRUCT peinture;
      const HDC dc = ::BeginPaint(Handle(), &peinture);
      const Regle& r = kRegleAPropos;
      const int epaisseur = std::max(1, Px(15, Dpi()));
      const int hautGris = Px(r.hautGris, Dpi());
      const int hautBlanc = std::max(Px(r.hautBlanc, Dpi()), hautGris + epaisseur);
      const RECT gris{Px(r.gaucheGris, Dpi()), hautGris, Px(r.fin, Dpi()), hautGris + epaisseur};
      const RECT blanc{Px(r.gaucheBlanc, Dpi()), hautBlanc, Px(r.fin, Dpi()), hautBlanc + 2 * epaisseur};
      const HBRUSH brosseGrise = ::CreateSolidBrush(RGB(0x80, 0x80, 0x80));
      ::FillRect(dc, &gris, brosseGrise);
      ::FillRect(dc, &blanc, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
      ::DeleteObject(brosseGrise);
      ::EndPaint(Handle(), &peinture);
      return 0;
    }
    default: return FormulaireWin32::Traiter(message, wparam, lparam);
  }
}

}  // namespace quillon::win32
