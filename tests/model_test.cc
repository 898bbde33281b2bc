#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <set>
#include <string>

#include "model/extent.h"
#include "model/value_tables.h"

namespace quillon {
namespace {

// The cells' contents are checked through whole runs: every value code of
// each table at every scale (tests/e2e, toutes-les-valeurs-en-prec-*), and
// the lookups' messages (recherches-*). Over every cell of the tables: each precision is the double nearest to its
// one-decimal text (so a precision read from a file compares equal), its decimal is the code's last digit, it occurs
// once in its table, and it sits in column 0 exactly for the codes below 59. Each precision finds its code back, and a
// neighbouring double does not.
TEST(TablesValeurs, Invariants) {
  const TablesValeurs& t = Tables();
  const std::pair<const TableValeurs*, std::size_t> tables[] = {{&t.PF, 25}, {&t.BF, 49}, {&t.CSOD, 49}};
  for (const auto& [table, nbCodes] : tables) {
    std::set<double> vus;
    std::set<int> codes;
    for (int v = 0; v <= 100; ++v) {
      EXPECT_EQ((*table)[v].PrecPlan[7], kNonDefini);
      for (int c = 0; c <= 6; ++c) {
        const double p = (*table)[v].PrecPlan[c];
        if (p == kNonDefini) continue;
        codes.insert(v);
        char texte[32];
        double relu = 0;
        std::from_chars(texte, std::to_chars(texte, texte + sizeof texte, p, std::chars_format::fixed, 1).ptr, relu);
        EXPECT_EQ(relu, p) << "code " << v;
        EXPECT_TRUE(vus.insert(p).second) << p << " twice";
        EXPECT_EQ(table->CodeDePrecision(p), v) << p;
        EXPECT_EQ(table->CodeDePrecision(std::nextafter(p, 1e9)), 0) << p << ", one unit in the last place above";
        EXPECT_EQ(std::lround(p * 10) % 10, v % 10) << p;
        EXPECT_EQ(c == 0, v < 59) << "code " << v << " column " << c;
      }
    }
    EXPECT_EQ(codes.size(), nbCodes);
  }
}

// The step of a grid: 1, 2 or 5 times a power of ten, the largest at most
// the length given, a step below 1 the double of its decimal.
TEST(PasRond, UnDeuxOuCinqFoisUnePuissanceDeDix) {
  const std::pair<double, double> cas[] = {
      {1, 1},           {1.999, 1},  {2, 2},         {4.999, 2},   {5, 5},     {9.999, 5},   {10, 10},
      {110, 100},       {1000, 1000}, {999.999, 500}, {20000, 20000}, {0.3, 0.2}, {0.1, 0.1},   {0.0025, 0.002},
      {0.001, 0.001},   {7e-7, 5e-7}, {1e15, 1e15},  {0, 1},       {-3, 1},    {NAN, 1},     {INFINITY, 1},
  };
  for (const auto& [v, pas] : cas) EXPECT_EQ(PasRond(v), pas) << v;
  // Over many lengths: a round step, at most the length, and the next
  // round step above it.
  for (double v = 1e-4; v < 1e9; v *= 1.0137) {
    const double p = PasRond(v);
    const long chiffre = std::lround(p / std::pow(10, std::floor(std::log10(p) + 1e-9)));
    ASSERT_TRUE(chiffre == 1 || chiffre == 2 || chiffre == 5) << v << ": " << p;
    ASSERT_LE(p, v);
    ASSERT_GT(p * (chiffre == 2 ? 2.5 : 2), v) << v;
  }
}

TEST(Emprise, PointsEtAutresEmprises) {
  Emprise e, vide;
  EXPECT_TRUE(e.vide);
  e.Ajouter(vide);
  EXPECT_TRUE(e.vide);
  e.Ajouter(2600010.5, 1200000);
  e.Ajouter(2599990, 1200003.25);
  Emprise autre;
  autre.Ajouter(2600000, 1199999);
  e.Ajouter(autre);
  e.Ajouter(vide);  // not a point at 0, 0
  EXPECT_EQ(e.yMin, 2599990);
  EXPECT_EQ(e.yMax, 2600010.5);
  EXPECT_EQ(e.xMin, 1199999);
  EXPECT_EQ(e.xMax, 1200003.25);
  EXPECT_EQ(e.Largeur(), 20.5);
  EXPECT_EQ(e.Hauteur(), 4.25);
}

}  // namespace
}  // namespace quillon
