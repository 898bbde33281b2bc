#include <gtest/gtest.h>

#include "formats/target_line.h"

// Every layout is checked byte for byte by the programs' cases (tests/e2e);
// the DC reader's rules by quillon-lot's DC cases (lot-dc-*). Only the
// target-line buffer's edges, which no file reaches, are checked here.
namespace quillon {
namespace {

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
