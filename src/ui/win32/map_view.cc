#include "ui/win32/map_view.h"

#include <windowsx.h>
#include <commctrl.h>

#include <cmath>
#include <cstdlib>
#include <map>

#include "ui/win32/win32_util.h"

namespace quillon::win32 {
namespace {

COLORREF Couleur(Rgb c) { return RGB(c.r, c.g, c.b); }
int Entier(double v) { return static_cast<int>(std::lround(v)); }

void PeindreRaster(HDC dc, const Dessin& d) {
  if (d.largeur <= 0 || d.hauteur <= 0 || d.pixels.size() < std::size_t(d.largeur) * std::size_t(d.hauteur)) return;
  BITMAPINFO infos{};
  infos.bmiHeader.biSize = sizeof infos.bmiHeader;
  infos.bmiHeader.biWidth = d.largeur;
  infos.bmiHeader.biHeight = -d.hauteur;  // by rows from the top
  infos.bmiHeader.biPlanes = 1;
  infos.bmiHeader.biBitCount = 32;  // 0xFFRRGGBB is B, G, R, A in memory
  infos.bmiHeader.biCompression = BI_RGB;
  // Stretched rather than set, so that a world transform (the printed
  // page's) scales it too; one to one on the screen.
  ::StretchDIBits(dc, 0, 0, d.largeur, d.hauteur, 0, 0, d.largeur, d.hauteur, d.pixels.data(), &infos, DIB_RGB_COLORS,
                  SRCCOPY);
}

void PeindreTraits(HDC dc, const Dessin& d, double facteur) {
  ::SelectObject(dc, ::GetStockObject(NULL_BRUSH));
  for (const Anneau& a : d.anneaux) {
    const HPEN stylo = ::CreatePen(PS_SOLID, std::max(1, Entier(a.epaisseur * facteur)), Couleur(a.couleur));
    const HGDIOBJ avant = ::SelectObject(dc, stylo);
    ::Ellipse(dc, Entier(a.x - a.rayon), Entier(a.y - a.rayon), Entier(a.x + a.rayon) + 1, Entier(a.y + a.rayon) + 1);
    ::DeleteObject(::SelectObject(dc, avant));
  }
  for (const Croix& c : d.croix) {
    const HPEN stylo = ::CreatePen(PS_SOLID, std::max(1, Entier(2 * facteur)), Couleur(c.couleur));
    const HGDIOBJ avant = ::SelectObject(dc, stylo);
    const int x0 = Entier(c.x - c.demi), x1 = Entier(c.x + c.demi), y0 = Entier(c.y - c.demi), y1 = Entier(c.y + c.demi);
    ::MoveToEx(dc, x0, y0, nullptr);
    ::LineTo(dc, x1 + 1, y1 + 1);
    ::MoveToEx(dc, x0, y1, nullptr);
    ::LineTo(dc, x1 + 1, y0 - 1);
    ::DeleteObject(::SelectObject(dc, avant));
  }
  for (const Forme& f : d.formes) {
    std::vector<POINT> sommets;
    for (const auto& s : f.sommets) sommets.push_back(POINT{Entier(s[0]), Entier(s[1])});
    const HBRUSH brosse = ::CreateSolidBrush(Couleur(f.couleur));
    const HPEN stylo = ::CreatePen(PS_SOLID, 1, Couleur(f.couleur));
    const HGDIOBJ avantBrosse = ::SelectObject(dc, brosse), avantStylo = ::SelectObject(dc, stylo);
    ::Polygon(dc, sommets.data(), static_cast<int>(sommets.size()));
    ::DeleteObject(::SelectObject(dc, avantBrosse));
    ::DeleteObject(::SelectObject(dc, avantStylo));
  }
}

void PeindreTextes(HDC dc, const Dessin& d, double facteur) {
  std::map<int, HFONT> polices;
  ::SetBkMode(dc, TRANSPARENT);
  const UINT alignement = ::SetTextAlign(dc, TA_BASELINE | TA_LEFT | TA_NOUPDATECP);
  const HGDIOBJ avant = ::GetCurrentObject(dc, OBJ_FONT);
  for (const TexteCarte& t : d.textes) {
    const int taille = std::max(1, Entier(t.taille * facteur));
    HFONT& police = polices[taille];
    if (police == nullptr) {
      police = ::CreateFontW(-taille, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                             CLIP_DEFAULT_PRECIS, CLEARTYPE_QUALITY, DEFAULT_PITCH | FF_SWISS, L"Segoe UI");
    }
    ::SelectObject(dc, police);
    ::SetTextColor(dc, Couleur(t.couleur));
    const std::wstring texte = Large(t.texte);
    ::TextOutW(dc, Entier(t.x), Entier(t.y), texte.c_str(), static_cast<int>(texte.size()));
  }
  ::SelectObject(dc, avant);
  ::SetTextAlign(dc, alignement);
  for (const auto& [taille, police] : polices) ::DeleteObject(police);
}

}  // namespace

void PeindreDessin(HDC dc, const Dessin& dessin, UINT dpi) {
  const double facteur = dpi / 96.0;
  PeindreRaster(dc, dessin);
  PeindreTraits(dc, dessin, facteur);
  PeindreTextes(dc, dessin, facteur);
}

CarteWin32::~CarteWin32() {
  if (infobulle_ != nullptr) ::DestroyWindow(infobulle_);
}

bool CarteWin32::Creer(HWND parent, int id) {
  if (!FenetreWin32::Creer(WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, WS_EX_CLIENTEDGE, L"", parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)))) {
    return false;
  }
  // A tracking tooltip: shown where the pointer is, with the text of the
  // point under it.
  infobulle_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0,
                                 0, 0, 0, Handle(), nullptr, ::GetModuleHandleW(nullptr), nullptr);
  TTTOOLINFOW outil{};
  outil.cbSize = sizeof outil;
  outil.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_IDISHWND;
  outil.hwnd = Handle();
  outil.uId = reinterpret_cast<UINT_PTR>(Handle());
  outil.lpszText = const_cast<wchar_t*>(L"");
  ::SendMessageW(infobulle_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&outil));
  ::SendMessageW(infobulle_, TTM_SETMAXTIPWIDTH, 0, 600);
  return true;
}

void CarteWin32::Peindre(HDC dc) {
  RECT client{};
  ::GetClientRect(Handle(), &client);
  const HDC memoire = ::CreateCompatibleDC(dc);
  const HBITMAP image = ::CreateCompatibleBitmap(dc, std::max(1L, client.right), std::max(1L, client.bottom));
  const HGDIOBJ avant = ::SelectObject(memoire, image);
  ::FillRect(memoire, &client, static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH)));
  PeindreDessin(memoire, atelier_.Dessiner(), dpi_);
  if (atelier_.Montre() == nullptr && !atelier_.MessageFichier().empty()) {
    // Why nothing is drawn yet: "Lecture de …", or why the file cannot be shown.
    const std::wstring texte = Large(atelier_.MessageFichier());
    RECT marge = client;
    ::InflateRect(&marge, -10, -10);
    ::SelectObject(memoire, ::GetStockObject(DEFAULT_GUI_FONT));
    ::SetBkMode(memoire, TRANSPARENT);
    ::SetTextColor(memoire, RGB(0x66, 0x66, 0x66));
    ::DrawTextW(memoire, texte.c_str(), static_cast<int>(texte.size()), &marge, DT_CENTER | DT_WORDBREAK);
  }
  ::BitBlt(dc, 0, 0, client.right, client.bottom, memoire, 0, 0, SRCCOPY);
  ::SelectObject(memoire, avant);
  ::DeleteObject(image);
  ::DeleteDC(memoire);
}

void CarteWin32::Bouger(int x, int y, bool bouton) {
  if (!appuye_ || !bouton) return Survoler(x, y);
  const int seuil = ::MulDiv(4, static_cast<int>(dpi_), 96);
  if (!glisse_ && std::abs(x - depart_.x) + std::abs(y - depart_.y) < seuil) return;
  glisse_ = true;
  atelier_.Carte_Glisser(x - dernier_.x, y - dernier_.y);
  dernier_ = POINT{x, y};
}

void CarteWin32::Survoler(int x, int y) {
  const std::string texte = atelier_.Carte_Survol(x, y);
  if (texte == bulle_) return;
  bulle_ = texte;
  TTTOOLINFOW outil{};
  outil.cbSize = sizeof outil;
  outil.hwnd = Handle();
  outil.uId = reinterpret_cast<UINT_PTR>(Handle());
  if (texte.empty()) {
    ::SendMessageW(infobulle_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&outil));
    return;
  }
  std::wstring large = Large(texte);
  outil.lpszText = large.data();
  ::SendMessageW(infobulle_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&outil));
  POINT ecran{x + 16, y + 16};
  ::ClientToScreen(Handle(), &ecran);
  ::SendMessageW(infobulle_, TTM_TRACKPOSITION, 0, MAKELPARAM(ecran.x, ecran.y));
  ::SendMessageW(infobulle_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&outil));
  TRACKMOUSEEVENT suivi{sizeof suivi, TME_LEAVE, Handle(), 0};
  ::TrackMouseEvent(&suivi);
}

LRESULT CarteWin32::Traiter(UINT message, WPARAM wparam, LPARAM lparam) {
  const int x = GET_X_LPARAM(lparam), y = GET_Y_LPARAM(lparam);
  switch (message) {
    case WM_SIZE: atelier_.Carte_Taille(LOWORD(lparam), HIWORD(lparam)); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_PAINT: {
      PAINTSTRUCT peinture;
      const HDC dc = ::BeginPaint(Handle(), &peinture);
      Peindre(dc);
      ::EndPaint(Handle(), &peinture);
      return 0;
    }
    case WM_PRINTCLIENT: Peindre(reinterpret_cast<HDC>(wparam)); return 0;
    case WM_MOUSEWHEEL: {
      POINT point{x, y};  // on the screen
      ::ScreenToClient(Handle(), &point);
      atelier_.Carte_Molette(GET_WHEEL_DELTA_WPARAM(wparam), point.x, point.y);
      return 0;
    }
    case WM_LBUTTONDOWN:
      ::SetFocus(Handle());
      ::SetCapture(Handle());
      appuye_ = true, glisse_ = false;
      depart_ = dernier_ = POINT{x, y};
      return 0;
    case WM_MOUSEMOVE: Bouger(x, y, (wparam & MK_LBUTTON) != 0); return 0;
    case WM_LBUTTONUP:
      if (appuye_ && !glisse_) atelier_.Carte_Clic(x, y);
      appuye_ = glisse_ = false;
      ::ReleaseCapture();
      return 0;
    case WM_CAPTURECHANGED: appuye_ = glisse_ = false; return 0;
    case WM_MOUSELEAVE: Survoler(-100000, -100000); return 0;
    default: return FenetreWin32::Traiter(message, wparam, lparam);
  }
}

}  // namespace quillon::win32
