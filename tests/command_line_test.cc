#include <gtest/gtest.h>

#include "app/command_line.h"

namespace quillon {
namespace {

TEST(LigneDeCommande, Decoupage) {
  struct Cas {
    const char* texte;
    int16_t max;
    std::vector<std::string> mots;  // without the empty index 0
  };
  const Cas cas[] = {
      {"a.ptv b.ptp", 4, {"a.ptv", "b.ptp"}},
      {"   a.ptv \t\t b.ptp   ", 4, {"a.ptv", "b.ptp"}},
      {"\"C:\\Mes Mesures\\a.ptv\" b", 4, {"\"C:\\Mes", "Mesures\\a.ptv\"", "b"}},
      {"a b c d e f", 4, {"a", "b", "c", "d"}},
      {"a b", 1, {"a"}},
      {"", 4, {}},
      {"  \t ", 4, {}},
  };
  for (const Cas& c : cas) {
    const auto mots = DecouperLigneCommande(c.texte, c.max);
    ASSERT_FALSE(mots.empty());
    EXPECT_EQ(mots[0], "");
    EXPECT_EQ(std::vector<std::string>(mots.begin() + 1, mots.end()), c.mots) << c.texte;
  }
}

TEST(LigneDeCommande, Arguments) {
  struct Cas {
    const char* texte;
    bool ok;
    int16_t echelle;
    int32_t groupe;
  };
  const Cas cas[] = {
      {"a.ptv b.ptp", true, 0, 0},
      {"a.ptv b.ptp 500 od", true, 2, 3},
      {"a.ptv b.ptp 250 CS", true, 1, 2},
      {"a.ptv b.ptp 5000 Cs", true, 6, 2},
      {"a.ptv b.ptp 250 CS extra", true, 1, 2},
      {"a.ptv b.ptp 500 XX", false, 0, 0},
      {"a.ptv b.ptp 0500 CS", false, 0, 0},
      {"a.ptv b.ptp 300 CS", false, 0, 0},
      {"a.ptv b.ptp 500", false, 0, 0},
      {"a.ptv", false, 0, 0},
      {"", false, 0, 0},
  };
  for (const Cas& c : cas) {
    std::string source, cible;
    int16_t echelle = 0;
    int32_t groupe = 0;
    EXPECT_EQ(LireArguments(c.texte, source, cible, echelle, groupe), c.ok) << c.texte;
    if (c.ok) {
      EXPECT_EQ(source, "a.ptv");
      EXPECT_EQ(cible, "b.ptp");
      EXPECT_EQ(echelle, c.echelle) << c.texte;
      EXPECT_EQ(groupe, c.groupe) << c.texte;
    }
  }
}

TEST(LigneDeCommande, TexteReconstruit) {
  const char* argv[] = {"quillon", "a b", "c\td", ""};
  EXPECT_EQ(TexteArguments(4, argv), "a b c\td ");
  EXPECT_EQ(TexteArguments(1, argv), "");
}

}  // namespace
}  // namespace quillon
