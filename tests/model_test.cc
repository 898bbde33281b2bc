#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <set>
#include <string>

#include "model/value_tables.h"

namespace quillon {
namespace {

// The cells' contents are checked through whole runs: every value code of
// each table at every scale (tests/e2e, toutes-les-valeurs-en-prec-*), and
// the lookups' messages (recherches-*). Over every cell of the tables: each precision is the double nearest to its one-decimal
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

}  // namespace
}  // namespace quillon
