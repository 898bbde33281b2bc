// The picture of the file shown on Win32: a child window that paints the
// workbench's drawing with GDI, double-buffered, and hands back its size,
// the wheel, drags, clicks and the pointer's hover (a tracking tooltip).
#pragma once

#include <string>

#include "ui/map_plan.h"
#include "ui/win32/window_base.h"
#include "ui/workbench.h"

namespace quillon::win32 {

// Paints a drawing at (0, 0) of `dc`: the raster, then rings, crosses,
// shapes and texts; sizes of pens and type scaled from 96 DPI to `dpi`.
void PeindreDessin(HDC dc, const Dessin& dessin, UINT dpi);

class CarteWin32 : public FenetreWin32 {
 public:
  explicit CarteWin32(Atelier& atelier) : atelier_(atelier) {}
  ~CarteWin32() override;
  // Created as child `id` of `parent`.
  bool Creer(HWND parent, int id);
  void DefinirDpi(UINT dpi) { dpi_ = dpi; }
  // The text of the tooltip shown, empty when none shows.
  const std::string& Bulle() const { return bulle_; }

 protected:
  LRESULT Traiter(UINT message, WPARAM wparam, LPARAM lparam) override;

 private:
  void Peindre(HDC dc);
  void Bouger(int x, int y, bool bouton);
  void Survoler(int x, int y);

  Atelier& atelier_;
  HWND infobulle_ = nullptr;
  std::string bulle_;
  UINT dpi_ = 96;
  bool appuye_ = false, glisse_ = false;
  POINT depart_{}, dernier_{};
};

}  // namespace quillon::win32
