#include "ui/map_plan.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace quillon {
namespace {

constexpr double kEchelleMin = 0.001;  // pixels a metre: a kilometre a pixel
constexpr double kEchelleMax = 1000;   // a millimetre a pixel

// The marks of each line from the checks.
std::vector<uint8_t> Marques(const Collecte& c, const Controles& k) {
  std::vector<uint8_t> m(c.Lignes().size(), 0);
  for (std::size_t i = 0; i < m.size(); ++i) {
    const IssueLigne issue = c.Lignes()[i].Issue();
    if (issue == IssueLigne::Rejetee) m[i] |= kMarqueRejet;
    if (issue == IssueLigne::Ignoree) m[i] |= kMarqueIgnore;
  }
  for (uint32_t ligne : k.membresDoublons) m[ligne] |= kMarqueDoublon;
  for (const PointsProches& p : k.proches) m[p.a] |= kMarqueProche, m[p.b] |= kMarqueProche;
  for (uint32_t ligne : k.eloignes) m[ligne] |= kMarqueEloigne;
  return m;
}

void Etendre(std::optional<Emprise>& e, double y, double x) {
  if (!e) e.emplace();
  e->Ajouter(y, x);
}

// The raster being drawn: white, then the grid, then the points.
struct Toile {
  int l, h;
  std::vector<uint32_t>& px;
  void Carre(int cx, int cy, int demi, uint32_t couleur) {
    for (int y = std::max(0, cy - demi); y <= std::min(h - 1, cy + demi); ++y) {
      for (int x = std::max(0, cx - demi); x <= std::min(l - 1, cx + demi); ++x) px[std::size_t(y) * l + x] = couleur;
    }
  }
};

void Grille(const VueCarte& vue, Toile& t, Dessin& d) {
  const double pas = PasRond(220 / vue.echelle);
  const uint32_t gris = kCouleurGrille.Argb();
  const double y0 = vue.Y(0), y1 = vue.Y(vue.largeur), x0 = vue.X(vue.hauteur), x1 = vue.X(0);
  for (double y = std::ceil(y0 / pas) * pas; y <= y1; y += pas) {
    const int c = static_cast<int>(std::lround(vue.Px(y)));
    if (c >= 0 && c < t.l) {
      for (int r = 0; r < t.h; ++r) t.px[std::size_t(r) * t.l + c] = gris;
    }
    d.textes.push_back({vue.Px(y) + 2, vue.hauteur - 4.0, "Y " + TexteCoordonnee(y, pas)});
  }
  for (double x = std::ceil(x0 / pas) * pas; x <= x1; x += pas) {
    const int r = static_cast<int>(std::lround(vue.Py(x)));
    if (r >= 0 && r < t.h) std::fill_n(t.px.begin() + std::ptrdiff_t(r) * t.l, t.l, gris);
    d.textes.push_back({2, vue.Py(x) - 2, "X " + TexteCoordonnee(x, pas)});
  }
}

// Counts per cell of 2 x 2 pixels, shaded as the report shades its density.
void Densite(const PlanCarte& plan, const VueCarte& vue, Toile& t) {
  const int cl = (t.l + 1) / 2, ch = (t.h + 1) / 2;
  std::vector<uint32_t> n(std::size_t(cl) * ch, 0);
  uint32_t max = 1;
  for (const PlanCarte::Point& p : plan.Points()) {
    if (p.marques & kMarqueRejet) continue;
    const double px = vue.Px(p.y), py = vue.Py(p.x);
    if (px < 0 || py < 0 || px >= t.l || py >= t.h) continue;
    uint32_t& c = n[std::size_t(py / 2) * cl + std::size_t(px / 2)];
    max = std::max(max, ++c);
  }
  const double lmax = std::log1p(max);
  for (int j = 0; j < ch; ++j) {
    for (int i = 0; i < cl; ++i) {
      const uint32_t c = n[std::size_t(j) * cl + i];
      if (c == 0) continue;
      const double a = 0.25 + 0.75 * std::log1p(c) / lmax;
      const auto mele = [a](uint8_t v) { return static_cast<uint8_t>(std::lround(255 - a * (255 - v))); };
      const uint32_t couleur = Rgb{mele(kCouleurDensite.r), mele(kCouleurDensite.g), mele(kCouleurDensite.b)}.Argb();
      for (int y = 2 * j; y < std::min(t.h, 2 * j + 2); ++y) {
        for (int x = 2 * i; x < std::min(t.l, 2 * i + 2); ++x) t.px[std::size_t(y) * t.l + x] = couleur;
      }
    }
  }
}

// Each point in view a square of 3 x 3 pixels, rejected ones aside.
// Each point a 3-pixel square; those whose square misses the picture are
// passed over before any rounding (at full zoom, nearly all of them).
void Points(const PlanCarte& plan, const VueCarte& vue, Toile& t) {
  const double hors = -0.5, droite = t.l + 0.5, bas = t.h + 0.5;
  for (const PlanCarte::Point& p : plan.Points()) {
    if (p.marques & kMarqueRejet) continue;
    const double px = vue.Px(p.y), py = vue.Py(p.x);
    if (px < hors || py < hors || px >= droite || py >= bas) continue;
    const Rgb c = p.marques & kMarqueIgnore ? kCouleurIgnore : kCouleursThemes[p.couleur % kCouleursThemes.size()];
    // Both at least -0.5 here: truncating after adding a half rounds.
    t.Carre(static_cast<int>(px + 0.5), static_cast<int>(py + 0.5), 1, c.Argb());
  }
}

// The marked points in view: rings under crosses, each kind capped.
void Marquer(const PlanCarte& plan, const VueCarte& vue, Dessin& d) {
  std::array<std::size_t, 4> nombres{};
  for (const PlanCarte::Point& p : plan.Points()) {
    if ((p.marques & (kMarqueRejet | kMarqueDoublon | kMarqueProche | kMarqueEloigne)) == 0) continue;
    const double px = std::round(vue.Px(p.y)), py = std::round(vue.Py(p.x));
    if (px < -20 || py < -20 || px > vue.largeur + 20 || py > vue.hauteur + 20) continue;
    const auto garder = [&](int sorte) { return nombres[std::size_t(sorte)]++ < kMarquesParSorte; };
    if ((p.marques & kMarqueDoublon) && garder(1)) d.anneaux.push_back({px, py, 7, 1.5, kCouleurDoublon});
    if ((p.marques & kMarqueProche) && garder(2)) d.anneaux.push_back({px, py, 10, 1.5, kCouleurProche});
    if ((p.marques & kMarqueEloigne) && garder(3)) d.anneaux.push_back({px, py, 13, 1.5, kCouleurEloigne});
    if ((p.marques & kMarqueRejet) && garder(0)) d.croix.push_back({px, py});
  }
}

// The scale bar at the bottom right, a round length about 100 pixels long,
// and the north arrow above it.
void EchelleEtNord(const VueCarte& vue, Dessin& d) {
  const double longueur = PasRond(100 / vue.echelle), px = longueur * vue.echelle;
  const double droite = vue.largeur - 30.0, bas = vue.hauteur - 22.0;
  d.formes.push_back({{{droite - px, bas}, {droite, bas}, {droite, bas + 4}, {droite - px, bas + 4}}, Rgb{}});
  d.textes.push_back({droite - px, bas - 6, TexteLongueur(longueur), 12, Rgb{}});
  d.formes.push_back({{{droite, 14}, {droite - 6, 34}, {droite + 6, 34}}, Rgb{}});
  d.textes.push_back({droite - 4, 48, "N", 12, Rgb{}});
}

}  // namespace

PlanCarte::PlanCarte(const Collecte& collecte, const Controles& controles) {
  const std::vector<uint8_t> marques = Marques(collecte, controles);
  ThemesTrouves trouves;  // of the lines placed, as the report ranks them
  for (const LigneCollectee& l : collecte.Lignes()) {
    if (l.Coordonnees()) trouves.Ajouter(l.theme);
  }
  themes_ = trouves.Liste();
  std::array<uint8_t, 256> rang{};
  for (std::size_t k = 0; k < themes_.size(); ++k) rang[std::size_t(themes_[k])] = static_cast<uint8_t>(k);
  for (std::size_t i = 0; i < collecte.Lignes().size(); ++i) {
    const LigneCollectee& l = collecte.Lignes()[i];
    if (!l.Coordonnees()) continue;
    points_.push_back({l.y, l.x, static_cast<uint32_t>(i), rang[l.theme], marques[i]});
    Etendre(etendue_, l.y, l.x);
  }
}

std::optional<std::size_t> PlanCarte::PointDeLaLigne(uint32_t ligne) const {
  const auto trouve = std::lower_bound(points_.begin(), points_.end(), ligne,
                                       [](const Point& p, uint32_t l) { return p.ligne < l; });
  if (trouve == points_.end() || trouve->ligne != ligne) return std::nullopt;
  return static_cast<std::size_t>(trouve - points_.begin());
}

void VueCarte::Ajuster(const Emprise& e, int marge) {
  const double l = e.yMax - e.yMin, h = e.xMax - e.xMin;
  const double dispoL = std::max(1, largeur - 2 * marge), dispoH = std::max(1, hauteur - 2 * marge);
  double s = std::min(l > 0 ? dispoL / l : INFINITY, h > 0 ? dispoH / h : INFINITY);
  if (!std::isfinite(s)) s = 100;
  echelle = std::clamp(s, kEchelleMin, kEchelleMax);
  Centrer((e.yMin + e.yMax) / 2, (e.xMin + e.xMax) / 2);
}

void VueCarte::Zoomer(double facteur, double px, double py) {
  const double y = Y(px), x = X(py);
  echelle = std::clamp(echelle * facteur, kEchelleMin, kEchelleMax);
  centreY = y - (px - largeur / 2.0) / echelle;
  centreX = x + (py - hauteur / 2.0) / echelle;
}

void VueCarte::Deplacer(double dx, double dy) {
  centreY -= dx / echelle;
  centreX += dy / echelle;
}

double FacteurMolette(int delta) { return std::exp(delta * 0.0015); }

Dessin Composer(const PlanCarte& plan, const VueCarte& vue, std::optional<uint32_t> choisi) {
  Dessin d;
  d.largeur = std::max(0, vue.largeur), d.hauteur = std::max(0, vue.hauteur);
  d.pixels.assign(std::size_t(d.largeur) * d.hauteur, 0xFFFFFFFFu);
  Toile t{d.largeur, d.hauteur, d.pixels};
  if (d.largeur == 0 || d.hauteur == 0) return d;
  Grille(vue, t, d);
  for (const PlanCarte::Point& p : plan.Points()) {
    const double px = vue.Px(p.y), py = vue.Py(p.x);
    d.dansLaVue += px >= 0 && py >= 0 && px < d.largeur && py < d.hauteur;
  }
  d.densite = d.dansLaVue > kPointsDessinesMax;
  if (d.densite) Densite(plan, vue, t);
  else Points(plan, vue, t);
  Marquer(plan, vue, d);
  if (choisi) {
    if (const auto i = plan.PointDeLaLigne(*choisi)) {
      const PlanCarte::Point& p = plan.Points()[*i];
      d.anneaux.push_back({std::round(vue.Px(p.y)), std::round(vue.Py(p.x)), 17, 2.5, Rgb{}});
    }
  }
  EchelleEtNord(vue, d);
  return d;
}

std::optional<uint32_t> PointSous(const PlanCarte& plan, const VueCarte& vue, double px, double py) {
  double meilleure = 49;  // 7 pixels, squared
  std::optional<uint32_t> ligne;
  for (const PlanCarte::Point& p : plan.Points()) {
    const double dx = vue.Px(p.y) - px, dy = vue.Py(p.x) - py, d = dx * dx + dy * dy;
    if (d < meilleure) meilleure = d, ligne = p.ligne;
  }
  return ligne;
}

std::string TexteCoordonnee(double valeur, double pas) {
  const int decimales = std::clamp(static_cast<int>(-std::floor(std::log10(pas) + 1e-9)), 0, 3);
  char texte[48];
  const auto r = std::to_chars(texte, texte + sizeof texte, valeur, std::chars_format::fixed, decimales);
  return std::string(texte, r.ptr);
}

std::string TexteLongueur(double metres) {
  const bool km = metres >= 1000;
  const double v = km ? metres / 1000 : metres;
  char texte[48];
  const auto r = std::to_chars(texte, texte + sizeof texte, v, std::chars_format::general, 6);
  std::string s(texte, r.ptr);
  std::replace(s.begin(), s.end(), '.', ',');
  return s + (km ? " km" : " m");
}

}  // namespace quillon
