// The main window's picture without a toolkit: round steps, the view's
// transform, what a small hand-made file draws, and what lies under a pixel.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "conversion/conversions.h"
#include "conversion/run_settings.h"
#include "report/collect.h"
#include "report/checks.h"
#include "support/file_system_memory.h"
#include "ui/map_plan.h"

namespace quillon {
namespace {

// A value line with its number, theme and coordinates.
std::string Ligne(const char* theme, const char* numero, const char* y, const char* x) {
  std::string l = "01  12  34      100101 1OR 11.  2600123.450 1200456.780  450.120        borne        BO\r\n";
  l.replace(0, 2, theme);
  if (theme[1] == '2') l.replace(27, 2, "43");  // a value the situation points' table holds
  l.replace(16, 6, numero);
  l.replace(32, 11, y);
  l.replace(44, 11, x);
  return l;
}

struct Fichier {
  Collecte collecte;
  Controles controles;
  PlanCarte plan;
  explicit Fichier(const std::string& source) {
    SystemeFichiersMemoire fs;
    fs.fichiers["s.ptv"] = source;
    AffichageRetenu affichage;
    ReglagesExecution r;
    InitialiserTables(r);
    r.affichage = &affichage;
    r.systeme = &fs;
    r.observateur = &collecte;
    r.DefinirSource("s.ptv");
    r.FichierCible.Nom = "s.ptp";
    EXPECT_TRUE(Convertir(r, Conversion::ValEnPrecFiab, {3, 2}));
    controles = Controler(collecte, kToleranceDefaut);
    plan = PlanCarte(collecte, controles);
  }
};

TEST(PlanCarte, TextesDesCoordonneesEtLongueurs) {
  EXPECT_EQ(TexteCoordonnee(2600000, 200), "2600000");
  EXPECT_EQ(TexteCoordonnee(2600000.5, 0.5), "2600000.5");
  EXPECT_EQ(TexteCoordonnee(1200000.02, 0.02), "1200000.02");
  EXPECT_EQ(TexteLongueur(50), "50 m");
  EXPECT_EQ(TexteLongueur(2000), "2 km");
  EXPECT_EQ(TexteLongueur(0.5), "0,5 m");
}

// Zooming keeps the survey point under the cursor where it is; panning
// moves the picture with the mouse; fitting shows the whole extent.
TEST(PlanCarte, VueAjusteeZoomeeDeplacee) {
  VueCarte v;
  v.largeur = 800, v.hauteur = 600;
  v.Ajuster({2600000, 2601000, 1200000, 1200500});
  EXPECT_NEAR(v.Px(2600000), 30, 1e-6);
  EXPECT_NEAR(v.Px(2601000), 770, 1e-6);
  EXPECT_GE(v.Py(1200500), 30 - 1e-6);  // X up
  EXPECT_LT(v.Py(1200500), v.Py(1200000));
  const double y = v.Y(123), x = v.X(456);
  EXPECT_LT(FacteurMolette(-120), 1);  // turned towards the user: farther
  v.Zoomer(FacteurMolette(120), 123, 456);  // away: closer
  EXPECT_GT(v.echelle, 0.74);
  EXPECT_NEAR(v.Px(y), 123, 1e-6);
  EXPECT_NEAR(v.Py(x), 456, 1e-6);
  v.Deplacer(40, -10);
  EXPECT_NEAR(v.Px(y), 163, 1e-6);
  EXPECT_NEAR(v.Py(x), 446, 1e-6);
  v.Ajuster({2600000, 2600000, 1200000, 1200000});  // one point: a metre for 100 pixels
  EXPECT_DOUBLE_EQ(v.echelle, 100);
}

// Five lines: two points of theme 1, a duplicate of the first a metre away,
// two points 5 mm apart, one rejected line with coordinates and one whose
// coordinates cannot be read.
TEST(PlanCarte, CeQuUnPetitFichierDessine) {
  const Fichier f(Ligne("01", "000001", "2600000.000", "1200000.000") +
                  Ligne("02", "000002", "2600100.000", "1200050.000") +
                  Ligne("01", "000001", "2600001.000", "1200000.000") +
                  Ligne("01", "000003", "2600050.000", "1200020.000") +
                  Ligne("01", "000004", "2600050.005", "1200020.000") +
                  Ligne("01", "00000x", "2600080.000", "1200010.000") + Ligne("01", "000005", "26000x0.000", "1200010.000"));
  ASSERT_EQ(f.plan.Points().size(), 6u);  // the last line has no place
  EXPECT_EQ(f.plan.Themes(), (std::vector<int>{1, 2}));
  VueCarte v;
  v.largeur = 400, v.hauteur = 300;
  v.Ajuster(*f.plan.Etendue());
  const Dessin d = Composer(f.plan, v, 1u);
  EXPECT_FALSE(d.densite);
  EXPECT_EQ(d.dansLaVue, 6u);
  ASSERT_EQ(d.croix.size(), 1u);
  EXPECT_NEAR(d.croix[0].x, std::round(v.Px(2600080)), 0.5);
  const auto compter = [&](Rgb c) {
    return std::count_if(d.anneaux.begin(), d.anneaux.end(), [&](const Anneau& a) { return a.couleur.Argb() == c.Argb(); });
  };
  EXPECT_EQ(compter(kCouleurDoublon), 2);
  EXPECT_EQ(compter(kCouleurProche), 2);
  EXPECT_EQ(compter(Rgb{}), 1);  // the chosen line
  // The theme-2 point in its colour, the rejected line's nowhere in the raster.
  const auto pixel = [&](double y, double x) {
    return d.pixels[std::size_t(std::lround(v.Py(x))) * d.largeur + std::size_t(std::lround(v.Px(y)))];
  };
  EXPECT_EQ(pixel(2600100, 1200050), kCouleursThemes[1].Argb());
  EXPECT_EQ(pixel(2600000, 1200000), kCouleursThemes[0].Argb());
  EXPECT_EQ(pixel(2600080, 1200010), 0xFFFFFFFFu);
  // Grid labels at round coordinates, a round step apart, named by their
  // axis.
  std::vector<long> ys;
  for (const TexteCarte& t : d.textes) {
    if (t.texte.starts_with("Y ")) ys.push_back(std::stol(t.texte.substr(2)));
  }
  ASSERT_GE(ys.size(), 2u);
  const long pas = ys[1] - ys[0];
  EXPECT_DOUBLE_EQ(PasRond(static_cast<double>(pas)), static_cast<double>(pas));
  for (long y : ys) EXPECT_EQ(y % pas, 0) << y;
  EXPECT_EQ(PointSous(f.plan, v, v.Px(2600100), v.Py(1200050) + 5), 1u);
  EXPECT_EQ(PointSous(f.plan, v, v.Px(2600100) + 20, v.Py(1200050)), std::nullopt);
  EXPECT_EQ(PointSous(f.plan, v, v.Px(2600080), v.Py(1200010)), 5u);
}

// Past the points drawn one by one, their density, the marked ones exact.
TEST(PlanCarte, DensiteAuDelaDeCentMillePoints) {
  std::string source;
  char y[16], x[16];
  for (int i = 0; i < 120000; ++i) {
    std::snprintf(y, sizeof y, "%11.3f", 2600000 + (i % 400) * 2.5);
    std::snprintf(x, sizeof x, "%11.3f", 1200000 + (i / 400) * 2.5);
    char n[8];
    std::snprintf(n, sizeof n, "%06d", i);
    source += Ligne(i == 7 ? "0x" : "01", n, y, x);
  }
  const Fichier f(source);
  VueCarte v;
  v.largeur = 600, v.hauteur = 400;
  v.Ajuster(*f.plan.Etendue());
  const Dessin d = Composer(f.plan, v);
  EXPECT_TRUE(d.densite);
  EXPECT_EQ(d.croix.size(), 1u);
  v.Zoomer(50, 300, 200);
  EXPECT_FALSE(Composer(f.plan, v).densite);
}

}  // namespace
}  // namespace quillon
