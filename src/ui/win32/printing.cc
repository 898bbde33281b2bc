#include "ui/win32/printing.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "ui/win32/map_view.h"
#include "ui/win32/win32_util.h"

namespace quillon::win32 {
namespace {

int Dots(double mm, double points) { return static_cast<int>(std::lround(mm * points)); }
COLORREF Couleur(Rgb c) { return RGB(c.r, c.g, c.b); }

// The picture scaled into its rectangle by the world transform, as the
// window paints it at 96 DPI, and framed in grey.
void PeindreCarte(HDC dc, const CartePage& c, double points) {
  if (c.dessin.largeur <= 0 || c.dessin.hauteur <= 0) return;
  const int etat = ::SaveDC(dc);
  ::IntersectClipRect(dc, Dots(c.x, points), Dots(c.y, points), Dots(c.x + c.largeur, points),
                      Dots(c.y + c.hauteur, points));
  ::SetGraphicsMode(dc, GM_ADVANCED);
  const XFORM echelle{static_cast<FLOAT>(c.largeur * points / c.dessin.largeur), 0, 0,
                      static_cast<FLOAT>(c.hauteur * points / c.dessin.hauteur), static_cast<FLOAT>(c.x * points),
                      static_cast<FLOAT>(c.y * points)};
  ::SetWorldTransform(dc, &echelle);
  PeindreDessin(dc, c.dessin, 96);
  ::RestoreDC(dc, etat);
  const HPEN stylo = ::CreatePen(PS_SOLID, std::max(1, Dots(0.2, points)), RGB(0x80, 0x80, 0x80));
  const HGDIOBJ avantStylo = ::SelectObject(dc, stylo), avantBrosse = ::SelectObject(dc, ::GetStockObject(NULL_BRUSH));
  ::Rectangle(dc, Dots(c.x, points), Dots(c.y, points), Dots(c.x + c.largeur, points), Dots(c.y + c.hauteur, points));
  ::SelectObject(dc, avantBrosse);
  ::DeleteObject(::SelectObject(dc, avantStylo));
}

void PeindreTrait(HDC dc, const TraitPage& t, double points) {
  const HPEN stylo = ::CreatePen(PS_SOLID, std::max(1, Dots(t.epaisseur, points)), Couleur(t.couleur));
  const HGDIOBJ avant = ::SelectObject(dc, stylo);
  ::MoveToEx(dc, Dots(t.x1, points), Dots(t.y1, points), nullptr);
  ::LineTo(dc, Dots(t.x2, points), Dots(t.y2, points));
  ::DeleteObject(::SelectObject(dc, avant));
}

// The texts on their baselines, a font per size and weight.
void PeindreTextes(HDC dc, const std::vector<TextePage>& textes, double points) {
  std::map<std::pair<int, bool>, HFONT> polices;
  ::SetBkMode(dc, TRANSPARENT);
  const UINT alignement = ::SetTextAlign(dc, TA_BASELINE | TA_LEFT | TA_NOUPDATECP);
  const HGDIOBJ avant = ::GetCurrentObject(dc, OBJ_FONT);
  for (const TextePage& t : textes) {
    const int hauteur = std::max(1, Dots(t.taille * 25.4 / 72, points));
    HFONT& police = polices[{hauteur, t.gras}];
    if (police == nullptr) {
      police = ::CreateFontW(-hauteur, 0, 0, 0, t.gras ? FW_BOLD : FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                             OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS,
                             L"Segoe UI");
    }
    ::SelectObject(dc, police);
    ::SetTextColor(dc, Couleur(t.couleur));
    const std::wstring texte = Large(t.texte);
    ::TextOutW(dc, Dots(t.x, points), Dots(t.y, points), texte.c_str(), static_cast<int>(texte.size()));
  }
  ::SelectObject(dc, avant);
  ::SetTextAlign(dc, alignement);
  for (const auto& [cle, police] : polices) ::DeleteObject(police);
}

}  // namespace

HDC FeuillesImprimante::Ouvrir() {
  if (!commence_) {
    DOCINFOW document{};
    document.cbSize = sizeof document;
    document.lpszDocName = titre_.c_str();
    if (::StartDocW(dc_, &document) <= 0) return nullptr;
    commence_ = true;
  }
  return ::StartPage(dc_) > 0 ? dc_ : nullptr;
}

bool FeuillesImprimante::Fermer() { return ::EndPage(dc_) > 0; }

bool FeuillesImprimante::Terminer(bool reussi) {
  if (!commence_) return reussi;
  commence_ = false;
  if (reussi) return ::EndDoc(dc_) > 0;
  ::AbortDoc(dc_);
  return false;
}

ZoneMm ZoneImprimable(HDC dc, const RECT& marges) {
  const double px = ::GetDeviceCaps(dc, LOGPIXELSX) / 25.4, py = ::GetDeviceCaps(dc, LOGPIXELSY) / 25.4;
  if (px <= 0 || py <= 0) return {};
  // The paper, and what the device prints of it, in mm from the paper's
  // top left; a device that is no printer (a metafile) prints it all.
  const double papierL = ::GetDeviceCaps(dc, PHYSICALWIDTH) / px, papierH = ::GetDeviceCaps(dc, PHYSICALHEIGHT) / py;
  const double x0 = ::GetDeviceCaps(dc, PHYSICALOFFSETX) / px, y0 = ::GetDeviceCaps(dc, PHYSICALOFFSETY) / py;
  const double x1 = x0 + ::GetDeviceCaps(dc, HORZRES) / px, y1 = y0 + ::GetDeviceCaps(dc, VERTRES) / py;
  const double gauche = std::max(x0, marges.left / 100.0), haut = std::max(y0, marges.top / 100.0);
  const double droite = papierL > 0 ? std::min(x1, papierL - marges.right / 100.0) : x1;
  const double bas = papierH > 0 ? std::min(y1, papierH - marges.bottom / 100.0) : y1;
  if (droite <= gauche || bas <= haut) return {0, 0, x1 - x0, y1 - y0};  // margins wider than the paper
  return {gauche - x0, haut - y0, droite - gauche, bas - haut};
}

void PeindrePage(HDC dc, const Page& page, double points) {
  for (const CartePage& c : page.cartes) PeindreCarte(dc, c, points);
  for (const TraitPage& t : page.traits) PeindreTrait(dc, t, points);
  PeindreTextes(dc, page.textes, points);
}

bool PeindrePages(Feuilles& feuilles, const std::vector<Page>& pages, const ZoneMm& zone) {
  for (const Page& page : pages) {
    const HDC dc = feuilles.Ouvrir();
    if (dc == nullptr) return false;
    const double points = ::GetDeviceCaps(dc, LOGPIXELSX) / 25.4;
    POINT avant{};
    ::SetViewportOrgEx(dc, Dots(zone.x, points), Dots(zone.y, points), &avant);
    PeindrePage(dc, page, points);
    ::SetViewportOrgEx(dc, avant.x, avant.y, nullptr);
    if (!feuilles.Fermer()) return false;
  }
  return true;
}

}  // namespace quillon::win32
