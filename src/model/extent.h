// The extent of points in the plane, and the round steps that a grid or a
// scale over it is drawn with.
#pragma once

namespace quillon {

// The smallest and largest Y and X of the points added; all four 0 while
// none has been.
struct Emprise {
  double yMin = 0, yMax = 0, xMin = 0, xMax = 0;
  bool vide = true;

  void Ajouter(double y, double x) {
    if (vide) {
      yMin = yMax = y, xMin = xMax = x, vide = false;
      return;
    }
    yMin = y < yMin ? y : yMin, yMax = y > yMax ? y : yMax;
    xMin = x < xMin ? x : xMin, xMax = x > xMax ? x : xMax;
  }
  void Ajouter(const Emprise& autre) {
    if (autre.vide) return;
    Ajouter(autre.yMin, autre.xMin);
    Ajouter(autre.yMax, autre.xMax);
  }
  double Largeur() const { return yMax - yMin; }
  double Hauteur() const { return xMax - xMin; }
};

// The largest of 1, 2 or 5 times a power of ten that is at most `v` (for a
// `v` above zero; 1 otherwise): the step of a grid, the length of a scale
// bar. A step below 1 is the double nearest to its decimal (0.002, not
// 2 * 0.001). The reports' map script follows the same rule.
double PasRond(double v);

}  // namespace quillon
