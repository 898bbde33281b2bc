#include "ui/win32/window_base.h"

#include "ui/win32/win32_util.h"

namespace quillon::win32 {
namespace {

constexpr wchar_t kClasse[] = L"QuillonFenetre";

// The program's icon, from its resources (IDI 1), or the system's.
HICON Icone(HINSTANCE instance, int taille) {
  const HANDLE icone = ::LoadImageW(instance, MAKEINTRESOURCEW(1), IMAGE_ICON, taille, taille, LR_DEFAULTCOLOR);
  return icone != nullptr ? static_cast<HICON>(icone) : ::LoadIconW(nullptr, IDI_APPLICATION);
}

ATOM EnregistrerClasse(HINSTANCE instance) {
  static const ATOM atome = [instance] {
    WNDCLASSEXW classe{};
    classe.cbSize = sizeof classe;
    classe.lpfnWndProc = ::DefWindowProcW;  // replaced per window
    classe.hInstance = instance;
    classe.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    classe.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    classe.lpszClassName = kClasse;
    classe.hIcon = Icone(instance, ::GetSystemMetrics(SM_CXICON));
    classe.hIconSm = Icone(instance, ::GetSystemMetrics(SM_CXSMICON));
    return ::RegisterClassExW(&classe);
  }();
  return atome;
}

}  // namespace

FenetreWin32::~FenetreWin32() {
  if (hwnd_ != nullptr) {
    ::SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
    ::DestroyWindow(hwnd_);
  }
}

bool FenetreWin32::Creer(DWORD style, DWORD styleEtendu, const wchar_t* titre, HWND proprietaire, HMENU menu) {
  const HINSTANCE instance = ::GetModuleHandleW(nullptr);
  EnregistrerClasse(instance);
  hwnd_ = ::CreateWindowExW(styleEtendu, kClasse, titre, style, CW_USEDEFAULT, CW_USEDEFAULT, 100, 100, proprietaire,
                            menu, instance, nullptr);
  if (hwnd_ == nullptr) return false;
  ::SetWindowLongPtrW(hwnd_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  ::SetWindowLongPtrW(hwnd_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&FenetreWin32::Procedure));
  return true;
}

LRESULT FenetreWin32::Traiter(UINT message, WPARAM wparam, LPARAM lparam) {
  return ::DefWindowProcW(hwnd_, message, wparam, lparam);
}

LRESULT CALLBACK FenetreWin32::Procedure(HWND hwnd, UINT message, WPARAM wparam, LPARAM lparam) {
  auto* fenetre = reinterpret_cast<FenetreWin32*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (fenetre == nullptr) return ::DefWindowProcW(hwnd, message, wparam, lparam);
  if (message == WM_NCDESTROY) {
    const LRESULT resultat = ::DefWindowProcW(hwnd, message, wparam, lparam);
    ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
    fenetre->hwnd_ = nullptr;
    fenetre->Detruite();
    return resultat;
  }
  return fenetre->Traiter(message, wparam, lparam);
}

// --- Forms -------------------------------------------------------------------

namespace {

constexpr DWORD kStyleFormulaire = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD kStyleEtenduFormulaire = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

}  // namespace

FormulaireWin32::~FormulaireWin32() {
  if (police_ != nullptr) ::DeleteObject(police_);
}

HWND FormulaireWin32::Controle(std::string_view nom) const {
  const int index = IndexControle(forme_, nom);
  return Handle() != nullptr && index >= 0 ? ::GetDlgItem(Handle(), IdControle(static_cast<std::size_t>(index)))
                                           : nullptr;
}

bool FormulaireWin32::CreerFormulaire(std::string_view titre, POINT decalage) {
  if (!Creer(kStyleFormulaire, kStyleEtenduFormulaire, Large(titre).c_str(), proprietaire_, nullptr)) return false;
  dpi_ = DpiFenetre(proprietaire_ != nullptr ? proprietaire_ : Handle());
  if (police_ != nullptr) ::DeleteObject(police_);
  police_ = CreerPolice(dpi_);
  const SIZE taille =
      TailleFenetre(forme_.largeur, forme_.hauteur, kStyleFormulaire, kStyleEtenduFormulaire, false, dpi_);
  RECT proprio{};
  ::GetWindowRect(proprietaire_, &proprio);
  ::SetWindowPos(Handle(), nullptr, proprio.left + decalage.x, proprio.top + decalage.y, taille.cx, taille.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  CreerControles(Handle(), forme_, police_, dpi_);
  return true;
}

LRESULT FormulaireWin32::Traiter(UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_DPICHANGED) {
    dpi_ = HIWORD(wparam);
    if (police_ != nullptr) ::DeleteObject(police_);
    police_ = CreerPolice(dpi_);
    PlacerControles(Handle(), forme_, police_, dpi_);
    AppliquerRectPropose(Handle(), lparam);
    return 0;
  }
  return FenetreWin32::Traiter(message, wparam, lparam);
}

void AppliquerRectPropose(HWND fenetre, LPARAM lparam) {
  const RECT* propose = reinterpret_cast<const RECT*>(lparam);
  ::SetWindowPos(fenetre, nullptr, propose->left, propose->top, propose->right - propose->left,
                 propose->bottom - propose->top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void BoucleMessages(HWND principale) {
  MSG message;
  while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
    const HWND actif = ::GetActiveWindow();
    if (actif != nullptr && actif != principale && ::IsDialogMessageW(actif, &message)) continue;
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
}

}  // namespace quillon::win32
