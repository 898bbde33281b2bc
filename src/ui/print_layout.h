// The printed pages of the file the main window shows, without any
// toolkit: its name, verdict and summary, its picture at the window's view,
// then its rejected lines and what the checks found, on as many pages as
// they need. Places are in millimetres from the top left of the printable
// area; each front end paints the primitives on its printer.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ui/checked_files.h"
#include "ui/map_plan.h"
#include "ui/shown_file.h"

namespace quillon {

struct TextePage {
  double x = 0, y = 0;  // the start of its baseline
  std::string texte;    // UTF-8
  double taille = 9;    // points
  bool gras = false;
  Rgb couleur{};
};
struct TraitPage {
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  double epaisseur = 0.2;  // millimetres
  Rgb couleur{0x80, 0x80, 0x80};
};
// A picture stretched over its rectangle: a pixel of the drawing is
// largeur / dessin.largeur millimetres wide.
struct CartePage {
  double x = 0, y = 0, largeur = 0, hauteur = 0;
  Dessin dessin;
};
struct Page {
  std::vector<TextePage> textes;
  std::vector<TraitPage> traits;
  std::vector<CartePage> cartes;
};

// The picture's resolution on paper: about that of a screen, so that its
// marks and labels keep the sizes the window gives them.
inline constexpr double kPixelsParMm = 4;

// The pages of `ligne`'s file, shown as `montre` with the window's `vue`
// (what the window shows fits in the picture) and its chosen line, on a
// printable area of `largeur` x `hauteur` mm.
std::vector<Page> MettreEnPages(const LigneFichier& ligne, const FichierMontre& montre, const VueCarte& vue,
                                std::optional<uint32_t> choisie, double largeur, double hauteur);

// A text cut into lines of at most `colonnes` characters, at blanks where
// it can.
std::vector<std::string> CouperTexte(const std::string& texte, std::size_t colonnes);

}  // namespace quillon
