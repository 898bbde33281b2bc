#include "ui/win32/win32_util.h"

#include <commctrl.h>

#include "io/encoding.h"

namespace quillon::win32 {

UINT DpiFenetre(HWND fenetre) {
  // GetDpiForWindow exists from Windows 10 (1607) on; before, the system DPI.
  using GetDpiForWindowFn = UINT(WINAPI*)(HWND);
  static const auto getDpiForWindow = reinterpret_cast<GetDpiForWindowFn>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
  if (getDpiForWindow != nullptr && fenetre != nullptr) {
    if (const UINT dpi = getDpiForWindow(fenetre); dpi != 0) return dpi;
  }
  const HDC ecran = ::GetDC(nullptr);
  const int dpi = ::GetDeviceCaps(ecran, LOGPIXELSY);
  ::ReleaseDC(nullptr, ecran);
  return dpi > 0 ? static_cast<UINT>(dpi) : 96;
}

int Px(int twips, UINT dpi) { return ::MulDiv(twips, static_cast<int>(dpi), 1440); }

HFONT CreerPolice(UINT dpi) {
  NONCLIENTMETRICSW mesures{};
  mesures.cbSize = sizeof mesures;
  ::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof mesures, &mesures, 0);
  LOGFONTW police = mesures.lfMessageFont;
  if (police.lfFaceName[0] == L'\0') ::lstrcpynW(police.lfFaceName, L"MS Shell Dlg 2", LF_FACESIZE);
  // The forms were drawn for an 8-point dialog font.
  police.lfHeight = -::MulDiv(8, static_cast<int>(dpi), 72);
  police.lfWidth = 0;
  return ::CreateFontIndirectW(&police);
}

SIZE TailleFenetre(int largeur, int hauteur, DWORD style, DWORD styleEtendu, bool menu, UINT dpi) {
  RECT rect{0, 0, Px(largeur, dpi), Px(hauteur, dpi)};
  using AdjustForDpiFn = BOOL(WINAPI*)(LPRECT, DWORD, BOOL, DWORD, UINT);
  static const auto ajuster = reinterpret_cast<AdjustForDpiFn>(reinterpret_cast<void*>(
      ::GetProcAddress(::GetModuleHandleW(L"user32.dll"), "AdjustWindowRectExForDpi")));
  if (ajuster != nullptr) {
    ajuster(&rect, style, menu, styleEtendu, dpi);
  } else {
    ::AdjustWindowRectEx(&rect, style, menu, styleEtendu);
  }
  return SIZE{rect.right - rect.left, rect.bottom - rect.top};
}

int IndexControle(const Formulaire& forme, std::string_view nom) {
  for (std::size_t i = 0; i < forme.controles.size(); ++i) {
    if (forme.controles[i].nom == nom) return static_cast<int>(i);
  }
  return -1;
}

void CreerControles(HWND fenetre, const Formulaire& forme, HFONT police, UINT dpi) {
  const auto instance = reinterpret_cast<HINSTANCE>(::GetWindowLongPtrW(fenetre, GWLP_HINSTANCE));
  for (std::size_t i = 0; i < forme.controles.size(); ++i) {
    const Controle& c = forme.controles[i];
    const wchar_t* classe = WC_STATICW;
    DWORD style = WS_CHILD | WS_VISIBLE;
    switch (c.genre) {
      case GenreControle::Etiquette: style |= SS_LEFT; break;
      case GenreControle::Image: style |= SS_ICON | SS_REALSIZEIMAGE; break;
      case GenreControle::Liste:
        classe = WC_COMBOBOXW;
        style |= WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST;
        break;
      case GenreControle::Bouton:
        classe = WC_BUTTONW;
        style |= WS_TABSTOP | BS_PUSHBUTTON;
        break;
      case GenreControle::Case:
        classe = WC_BUTTONW;
        style |= WS_TABSTOP | BS_AUTOCHECKBOX;
        break;
    }
    // The first control of the tab order starts a group.
    if (i == 0) style |= WS_GROUP;
    ::CreateWindowExW(0, classe, Large(c.texte).c_str(), style, 0, 0, 0, 0, fenetre,
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(IdControle(i))), instance, nullptr);
  }
  PlacerControles(fenetre, forme, police, dpi);
}

void PlacerControles(HWND fenetre, const Formulaire& forme, HFONT police, UINT dpi) {
  for (std::size_t i = 0; i < forme.controles.size(); ++i) {
    const Controle& c = forme.controles[i];
    const HWND controle = ::GetDlgItem(fenetre, IdControle(i));
    ::SendMessageW(controle, WM_SETFONT, reinterpret_cast<WPARAM>(police), FALSE);
    // A drop-down list's height is that of the list dropped down: room for
    // its entries.
    const int hauteur = c.genre == GenreControle::Liste ? Px(375, dpi) * 8 : Px(c.hauteur, dpi);
    ::MoveWindow(controle, Px(c.gauche, dpi), Px(c.haut, dpi), Px(c.largeur, dpi), hauteur, TRUE);
  }
}

std::string TexteSelection(HWND liste) {
  const LRESULT index = ::SendMessageW(liste, CB_GETCURSEL, 0, 0);
  if (index == CB_ERR) return {};
  const LRESULT longueur = ::SendMessageW(liste, CB_GETLBTEXTLEN, static_cast<WPARAM>(index), 0);
  if (longueur == CB_ERR) return {};
  std::wstring texte(static_cast<std::size_t>(longueur) + 1, L'\0');
  ::SendMessageW(liste, CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(texte.data()));
  texte.resize(static_cast<std::size_t>(longueur));
  return Utf8(texte);
}

}  // namespace quillon::win32
