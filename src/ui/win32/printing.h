// The printed pages of the file shown (print_layout.h), painted with GDI:
// the page's millimetres turned into the device's dots. The sheets come
// from a printer's document, or from anything else that hands out a device
// context per sheet (a metafile per page in the tests).
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "ui/print_layout.h"

namespace quillon::win32 {

// Where the pages go, a sheet at a time.
class Feuilles {
 public:
  virtual ~Feuilles() = default;
  // The device context of a new sheet; null when the device refuses.
  virtual HDC Ouvrir() = 0;
  // The sheet is drawn; false when the device refuses it.
  virtual bool Fermer() = 0;
};

// A printer's document named `titre`: a page of it per sheet, started at
// the first sheet and ended (or aborted, after a failure) by Terminer.
class FeuillesImprimante : public Feuilles {
 public:
  FeuillesImprimante(HDC dc, std::wstring titre) : dc_(dc), titre_(std::move(titre)) {}
  HDC Ouvrir() override;
  bool Fermer() override;
  // Ends the document: printed when `reussi`, dropped otherwise.
  bool Terminer(bool reussi);

 private:
  HDC dc_;
  std::wstring titre_;
  bool commence_ = false;
};

// Where the pages are painted, in millimetres from the top left of what the
// device can print.
struct ZoneMm {
  double x = 0, y = 0, largeur = 0, hauteur = 0;
};
// The part of the sheet within `marges` (hundredths of a millimetre from
// the paper's edges) that the device can print.
ZoneMm ZoneImprimable(HDC dc, const RECT& marges);

// Paints one page on `dc`, its dots `points` a millimetre from the printable
// area's top left.
void PeindrePage(HDC dc, const Page& page, double points);

// Paints the pages in `zone`, a sheet each; false as soon as a sheet is
// refused.
bool PeindrePages(Feuilles& feuilles, const std::vector<Page>& pages, const ZoneMm& zone);

}  // namespace quillon::win32
