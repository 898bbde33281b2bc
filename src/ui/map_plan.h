// The picture of a checked file, without any toolkit: what the main window
// draws (and prints) of the points of the file shown, with the check
// report's colours and rules, so that the window and the report agree.
//
//  PlanCarte  what there is to draw, in survey coordinates: each line with
//             coordinates, its theme's colour and its marks (rejected,
//             duplicate, close, far, skipped), and their extent;
//  VueCarte   the view: its size in pixels, its scale and centre, with
//             fitting, zooming around a pixel and panning;
//  Composer   the plan seen through a view, as pixel primitives for a
//             toolkit to paint: a raster (background, grid, points or their
//             density) below rings, crosses, texts and the scale bar;
//  PointSous  which line's point lies under a pixel.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/colors.h"
#include "model/extent.h"
#include "report/checks.h"
#include "report/collect.h"

namespace quillon {

// The marks of a line, a bit each.
enum : uint8_t { kMarqueRejet = 1, kMarqueDoublon = 2, kMarqueProche = 4, kMarqueEloigne = 8, kMarqueIgnore = 16 };

// Above that many points in view, their density is drawn instead of each
// point; the marked points are drawn exactly all the same, at most
// kMarquesParSorte of each kind in view.
inline constexpr std::size_t kPointsDessinesMax = 100'000;
inline constexpr std::size_t kMarquesParSorte = 10'000;

class PlanCarte {
 public:
  PlanCarte() = default;
  // The lines of a collect with their checks (copied: the plan keeps
  // 24 bytes a line with coordinates).
  PlanCarte(const Collecte& collecte, const Controles& controles);

  bool Vide() const { return points_.empty(); }
  // Of every line with coordinates; none without one.
  const std::optional<Emprise>& Etendue() const { return etendue_; }
  // The themes found, sorted: a point takes the colour of its theme's rank.
  const std::vector<int>& Themes() const { return themes_; }

  struct Point {
    double y = 0, x = 0;
    uint32_t ligne = 0;   // its line's index (line number - 1)
    uint8_t couleur = 0;  // rank of its theme in Themes()
    uint8_t marques = 0;
  };
  const std::vector<Point>& Points() const { return points_; }
  // The point of a line, if it has coordinates.
  std::optional<std::size_t> PointDeLaLigne(uint32_t ligne) const;

 private:
  std::vector<Point> points_;  // by line
  std::vector<int> themes_;
  std::optional<Emprise> etendue_;
};

class VueCarte {
 public:
  int largeur = 0, hauteur = 0;  // pixels
  double echelle = 1;            // pixels a metre
  double centreY = 0, centreX = 0;

  double Px(double y) const { return largeur / 2.0 + (y - centreY) * echelle; }
  double Py(double x) const { return hauteur / 2.0 - (x - centreX) * echelle; }
  double Y(double px) const { return centreY + (px - largeur / 2.0) / echelle; }
  double X(double py) const { return centreX - (py - hauteur / 2.0) / echelle; }

  // The whole extent in view, `marge` pixels from the edges, Y and X at the
  // same scale; a single point at one metre for 100 pixels.
  void Ajuster(const Emprise& emprise, int marge = 30);
  // Zooms by `facteur` keeping the survey point under the pixel (px, py)
  // where it is; the scale stays between a kilometre and a millimetre a
  // pixel.
  void Zoomer(double facteur, double px, double py);
  // Moves the picture by (dx, dy) pixels.
  void Deplacer(double dx, double dy);
  void Centrer(double y, double x) { centreY = y, centreX = x; }
};

// The wheel's zoom, for a turn as Qt and Win32 give it (120 a notch,
// positive away from the user): away brings the picture a fifth closer,
// towards the user takes it farther.
double FacteurMolette(int delta);

// Pixel primitives, painted in this order: the raster, then rings, crosses,
// filled shapes and texts.
struct Anneau {
  double x = 0, y = 0, rayon = 0, epaisseur = 1.5;
  Rgb couleur;
};
struct Croix {
  double x = 0, y = 0, demi = 4;
  Rgb couleur = kCouleurRejet;
};
struct Forme {  // a filled polygon (the scale bar, the north arrow)
  std::vector<std::array<double, 2>> sommets;
  Rgb couleur;
};
struct TexteCarte {
  double x = 0, y = 0;  // the start of its baseline
  std::string texte;    // UTF-8
  int taille = 11;      // pixels
  Rgb couleur = kCouleurTexte;
};
struct Dessin {
  int largeur = 0, hauteur = 0;
  std::vector<uint32_t> pixels;  // 0xFFRRGGBB, by rows from the top
  std::vector<Anneau> anneaux;
  std::vector<Croix> croix;
  std::vector<Forme> formes;
  std::vector<TexteCarte> textes;
  bool densite = false;        // the points drawn as their density
  std::size_t dansLaVue = 0;   // points in view
};

// The plan through the view; `choisi`: a line whose point is ringed in
// black.
Dessin Composer(const PlanCarte& plan, const VueCarte& vue, std::optional<uint32_t> choisi = std::nullopt);

// The line whose point is nearest the pixel, within 7 pixels.
std::optional<uint32_t> PointSous(const PlanCarte& plan, const VueCarte& vue, double px, double py);

// A coordinate as the grid labels it: whole metres when the step allows,
// else the decimals the step needs.
std::string TexteCoordonnee(double valeur, double pas);
// A length as the scale bar names it: "50 m", "2 km", "0,5 m".
std::string TexteLongueur(double metres);

}  // namespace quillon
