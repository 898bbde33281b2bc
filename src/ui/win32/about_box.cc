#include "ui/win32/about_box.h"

#include <algorithm>

#include "ui/forms.h"
#include "ui/win32/option_dialogs.h"
#include "ui/win32/win32_util.h"
#include "ui/window_logic.h"

namespace quillon::win32 {
namespace {

constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD kStyleEtendu = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

}  // namespace

AProposWin32::AProposWin32(Services& services, HWND proprietaire)
    : services_(services), proprietaire_(proprietaire) {}

AProposWin32::~AProposWin32() { Liberer(); }

void AProposWin32::Liberer() {
  if (police_ != nullptr) ::DeleteObject(police_);
  if (grande_ != nullptr) ::DeleteObject(grande_);
  if (icone_ != nullptr) ::DestroyIcon(icone_);
  police_ = grande_ = nullptr;
  icone_ = nullptr;
}

void AProposWin32::Detruite() { Liberer(); }

HWND AProposWin32::Controle(std::string_view nom) const {
  const int index = IndexControle(FormulaireAPropos(), nom);
  return Handle() != nullptr && index >= 0 ? ::GetDlgItem(Handle(), IdControle(static_cast<std::size_t>(index)))
                                           : nullptr;
}

void AProposWin32::Afficher() {
  if (Handle() == nullptr) {
    const Formulaire& forme = FormulaireAPropos();
    if (!Creer(kStyle, kStyleEtendu, L"", proprietaire_, nullptr)) return;
    dpi_ = DpiFenetre(proprietaire_ != nullptr ? proprietaire_ : Handle());
    police_ = CreerPolice(dpi_);
    const SIZE taille = TailleFenetre(forme.largeur, forme.hauteur, kStyle, kStyleEtendu, false, dpi_);
    RECT proprio{};
    ::GetWindowRect(proprietaire_, &proprio);
    ::SetWindowPos(Handle(), nullptr, proprio.left + 60, proprio.top + 40, taille.cx, taille.cy,
                   SWP_NOZORDER | SWP_NOACTIVATE);
    CreerControles(Handle(), forme, police_, dpi_);
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
    if (c.genre == GenreControle::Etiquette) ::SetWindowTextW(Controle(c.nom), Large(TexteAPropos(c.nom)).c_str());
  }
  // The title in a larger type, the icon at 32 x 32 pixels at 96 DPI.
  LOGFONTW police{};
  ::GetObjectW(police_, sizeof police, &police);
  police.lfHeight = -::MulDiv(14, static_cast<int>(dpi_), 72);
  grande_ = ::CreateFontIndirectW(&police);
  ::SendMessageW(Controle("lblTitle"), WM_SETFONT, reinterpret_cast<WPARAM>(grande_), TRUE);
  const int cote = ::MulDiv(32, static_cast<int>(dpi_), 96);
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
      return BoutonParDefaut(Handle(), IdControle(static_cast<std::size_t>(IndexControle(FormulaireAPropos(), "cmdOK"))));
    case WM_CLOSE: ::DestroyWindow(Handle()); return 0;
    case WM_PAINT: {
      // The etched rule between the description and the disclaimer.
      PAINTSTRUCT peinture;
      const HDC dc = ::BeginPaint(Handle(), &peinture);
      const Regle& r = kRegleAPropos;
      const int epaisseur = std::max(1, Px(15, dpi_));
      const int hautGris = Px(r.hautGris, dpi_);
      const int hautBlanc = std::max(Px(r.hautBlanc, dpi_), hautGris + epaisseur);
      const RECT gris{Px(r.gaucheGris, dpi_), hautGris, Px(r.fin, dpi_), hautGris + epaisseur};
      const RECT blanc{Px(r.gaucheBlanc, dpi_), hautBlanc, Px(r.fin, dpi_), hautBlanc + 2 * epaisseur};
      const HBRUSH brosseGrise = ::CreateSolidBrush(RGB(0x80, 0x80, 0x80));
      ::FillRect(dc, &gris, brosseGrise);
      ::FillRect(dc, &blanc, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
      ::DeleteObject(brosseGrise);
      ::EndPaint(Handle(), &peinture);
      return 0;
    }
    default: return FenetreWin32::Traiter(message, wparam, lparam);
  }
}

}  // namespace quillon::win32
