#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <set>
#include <string>

#include "model/value_tables.h"

namespace quillon {
namespace {

// The lookups themselves are checked through whole runs (tests/e2e,
// recherches-*). Over every cell of the tables: each precision is the double nearest to its one-decimal
// text (so a precision read from a file compares equal), its decimal is the
// code's last digit, it occurs once in its table, and it sits in column 0
// exactly for the codes below 59. Each precision finds its code back, and a
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

TEST(TablesValeurs, Contenus) {
  // Precision at (code, column) in PF, BF, CSOD (-1: not defined), and the
  // reliabilities 'O', 'N' or '-' (not defined).
  const struct {
    int valeur, colonne;
    double pf, bf, csod;
    const char* fiab;
  } cas[] = {
      {11, 0, 2.1, -1, -1, "O--"},          {12, 0, 3.2, -1, -1, "O--"},      {13, 0, -1, 3.3, 3.3, "-OO"},
      {17, 0, -1, 13.7, 13.7, "-ON"},       {46, 0, -1, 116.6, 116.6, "-OO"}, {55, 0, -1, 35.5, 35.5, "-NN"},
      {57, 0, -1, 135.7, 135.7, "-ON"},     {62, 3, 20.2, 20.2, 20.2, "OOO"}, {62, 0, -1, -1, -1, "---"},
      {75, 1, -1, 9.5, 9.5, "-NN"},         {75, 5, -1, 120.5, 120.5, "-NN"}, {89, 6, 230.9, 230.9, 230.9, "NNN"},
      {88, 2, 25.8, 25.8, 25.8, "NNN"},     {67, 4, 40.7, 40.7, 40.7, "OON"}, {58, 0, -1, -1, -1, "---"},
      {59, 3, -1, -1, -1, "---"},           {0, 0, -1, -1, -1, "---"},        {100, 0, -1, -1, -1, "---"},
  };
  const TablesValeurs& t = Tables();
  for (const auto& c : cas) {
    const TableValeurs* tables[] = {&t.PF, &t.BF, &t.CSOD};
    const double precisions[] = {c.pf, c.bf, c.csod};
    for (int k = 0; k < 3; ++k) {
      EXPECT_EQ((*tables[k])[c.valeur].PrecPlan[c.colonne], precisions[k]) << c.valeur << " table " << k;
      if (c.fiab[k] != '-') {
        EXPECT_EQ((*tables[k])[c.valeur].FiabPlan, c.fiab[k] == 'O') << c.valeur << " table " << k;
      }
    }
  }
  // Altimetric part: only PF codes below 59.
  EXPECT_EQ(t.PF[12].PrecAlt, 4.1);
  EXPECT_EQ(t.PF[42].PrecAlt, 16.2);
  EXPECT_EQ(t.PF[62].PrecAlt, kNonDefini);
  EXPECT_EQ(t.BF[13].PrecAlt, kNonDefini);
}

}  // namespace
}  // namespace quillon
