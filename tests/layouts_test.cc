#include <gtest/gtest.h>

#include "formats/pts_format.h"
#include "formats/target_line.h"
#include "test_support.h"

// The value, precision and MD01 layouts are checked byte for byte by the
// executable's cases (tests/e2e), and a DC file converted through the
// windows by the windowed tests; the DC reader's rules and the target-line
// buffer's edges are checked here.
namespace quillon {
namespace {

using test::JournalMemoire;
using test::LigneFixe;
using test::W;

struct CasDC {
  const char* nom;
  std::string ligne;
  int32_t groupe;
  bool ok;
  int theme;
  int nature;
  std::vector<std::string> messages;  // UTF-8, before the echoed line
};

std::string Dc(const char* commune, const char* plan, const char* numero, const char* nature, const char* valeur,
               const char* y, const char* x, const char* altitude, const char* commentaire) {
  return LigneFixe()
      .Colonne(1, commune).Colonne(4, plan).Colonne(14, numero).Colonne(19, nature).Colonne(22, valeur)
      .Colonne(25, y).Colonne(35, x).Colonne(45, altitude).Colonne(69, commentaire)
      .str();
}

TEST(FichierDC, LectureEtThemeDeduit) {
  const CasDC cas[] = {
      {"commune 400 nature 6", Dc("400", "  12", "1001", " 6", "63", "538000.500", "152000.250", "", ""), 3, true, 1, 5, {}},
      {"nature 6 takes the group", Dc("  1", "  12", "1001", "6 ", "63", "538000.500", "152000.250", "", ""), 3, true, 3, 5, {}},
      {"value 63 gives 6", Dc("  1", "  12", "1001", " 1", "63", "538000.500", "152000.250", "", ""), 2, true, 6, 1, {}},
      {"value 62 gives 1", Dc("  1", "  12", "1001", " 1", "62", "538000.500", "152000.250", "", ""), 2, true, 1, 1, {}},
      {"value 58 accepted", Dc("  1", "  12", "1001", " 1", "58", "538000.500", "152000.250", "", ""), 2, true, 6, 1, {}},
      {"commune 401", Dc("401", "  12", "1001", " 1", "62", "538000.500", "152000.250", "", ""), 2, false, 0, 1,
       {"Le numéro de commune: '401' n'est pas valide"}},
      {"Y not to the millimetre", Dc("  1", "  12", "1001", " 1", "62", " 38000.500", "152000.250", "", ""), 2, false, 0, 1,
       {"La coordonnée Y: '38000.500' doit être au millimètre"}},
      {"X ten chars, not a number", Dc("  1", "  12", "1001", " 1", "62", "538000.500", "152000,250", "", ""), 2, false, 0, 1,
       {"La coordonnée X: '152000,250' n'est pas valide"}},
      {"point 12ab, value 60", Dc("  1", "  12", "12ab", " 1", "60", "538000.500", "152000.250", "", ""), 2, false, 0, 1,
       {"Le numéro de point: '12ab' n'est pas valide", "La valeur: '60' n'est pas valide"}},
      {"empty line", "", 2, false, 0, 0,
       {"Le numéro de commune: '' n'est pas valide", "Le numéro de plan: '' n'est pas valide",
        "Le numéro de point: '' n'est pas valide", "La nature: '' n'est pas valide", "La valeur: '' n'est pas valide",
        "La coordonnée Y: '' doit être au millimètre", "La coordonnée X: '' doit être au millimètre"}},
  };
  for (const CasDC& c : cas) {
    JournalMemoire j(6);
    Point p;
    EXPECT_EQ(LireLignePtDC(c.ligne, c.groupe, p, j.journal), c.ok) << c.nom;
    if (c.ok) {
      EXPECT_EQ(p.Theme, c.theme) << c.nom;
      EXPECT_EQ(p.Nature, c.nature) << c.nom;
    }
    std::vector<std::string> attendu;
    for (const std::string& m : c.messages) attendu.push_back("LECTURE: ligne 6: " + W(m));
    if (!c.ok) attendu.push_back(c.ligne);
    EXPECT_EQ(j.Lignes(), attendu) << c.nom;
  }
}

TEST(FichierDC, DeductionDuTheme) {
  struct Cas {
    int16_t valeur;
    const char* nature;
    int16_t commune;
    int32_t groupe;
    int32_t theme;
  };
  const Cas cas[] = {
      {63, "6", 400, 3, 1}, {63, "6", 12, 3, 3}, {63, "6", 12, 2, 2}, {63, "1", 12, 3, 6},
      {62, "5", 12, 3, 1},  {71, "2", 12, 3, 1}, {59, "1", 12, 2, 6}, {11, "3", 399, 2, 1},
  };
  for (const Cas& c : cas) {
    int32_t theme = -1;
    DeduireThemePtDC(c.valeur, c.nature, c.commune, c.groupe, theme);
    EXPECT_EQ(theme, c.theme) << c.valeur << " " << c.nature << " " << c.commune;
  }
}

// A field too wide for its columns leaves blanks of the columns' width, so
// what follows stays in place; the buffer never grows past its capacity.
TEST(LigneCible, ChampsADroiteEtCapacite) {
  const struct {
    const char* texte;
    std::size_t largeur;
    bool ok;
    const char* attendu;
  } cas[] = {
      {"12", 4, true, "[  12]"}, {"1234", 4, true, "[1234]"}, {"12345", 4, false, "[    ]"}, {"", 3, true, "[   ]"},
  };
  for (const auto& c : cas) {
    LigneCible ligne;
    ligne.Ajouter('[');
    EXPECT_EQ(ligne.AjouterADroite(c.texte, c.largeur), c.ok) << c.texte;
    ligne.Ajouter(']');
    EXPECT_EQ(ligne.Texte(), c.attendu);
  }

  LigneCible pleine;
  const std::string remplissage(LigneCible::kCapacite - 1, 'a');
  pleine.Ajouter(remplissage);
  pleine.Ajouter("bcd");
  pleine.AjouterBlancs(10);
  pleine.Ajouter('e');
  EXPECT_FALSE(pleine.AjouterADroite("f", 5));
  EXPECT_EQ(pleine.Texte(), remplissage + "b");
  pleine.Effacer();
  EXPECT_EQ(pleine.Texte(), "");
}

}  // namespace
}  // namespace quillon
