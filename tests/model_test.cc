#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <set>
#include <string>

#include "model/point.h"
#include "model/value_lookups.h"
#include "model/value_tables.h"
#include "test_support.h"

namespace quillon {
namespace {

using test::JournalMemoire;
using test::W;

TEST(CodesValeur, ValiditeAutourDeLaCoupure) {
  std::set<int> valides;
  for (int v = -5; v <= 100; ++v) {
    if (EstValeurValide(v)) valides.insert(v);
  }
  std::set<int> attendus;
  for (int d = 1; d <= 5; ++d) {
    for (int u = 1; u <= 7; ++u) attendus.insert(d * 10 + u);
  }
  attendus.insert(58);
  attendus.insert(59);
  for (int d = 6; d <= 8; ++d) {
    for (int u = 2; u <= 9; ++u) attendus.insert(d * 10 + u);
  }
  EXPECT_EQ(valides, attendus);
}

// Every precision of the tables is the double nearest to its one-decimal
// text, so that a precision read from a file compares equal.
TEST(TablesValeurs, ChaqueNombreEstLePlusProcheDeSonTexte) {
  const TablesValeurs& t = Tables();
  for (const TableValeurs* table : {&t.PF, &t.BF, &t.CSOD}) {
    for (int v = 0; v <= 100; ++v) {
      const PrecFiabValeur& l = (*table)[v];
      for (double p : {l.PrecPlan[0], l.PrecPlan[1], l.PrecPlan[2], l.PrecPlan[3], l.PrecPlan[4],
                       l.PrecPlan[5], l.PrecPlan[6], l.PrecAlt}) {
        if (p == kNonDefini) continue;
        char texte[32];
        const auto r = std::to_chars(texte, texte + sizeof texte, p, std::chars_format::fixed, 1);
        double relu = 0;
        std::from_chars(texte, r.ptr, relu);
        EXPECT_EQ(relu, p) << "code " << v;
      }
      EXPECT_EQ(l.PrecPlan[7], kNonDefini);
    }
  }
}

TEST(TablesValeurs, CodesDefinisEtInvariants) {
  const TablesValeurs& t = Tables();
  const auto definis = [](const TableValeurs& table) {
    std::set<int> codes;
    for (int v = 0; v <= 100; ++v) {
      for (int c = 0; c < 8; ++c) {
        if (table[v].PrecPlan[c] != kNonDefini) codes.insert(v);
      }
    }
    return codes;
  };
  EXPECT_EQ(definis(t.PF), (std::set<int>{11, 12, 21, 22, 31, 32, 41, 42, 51, 52, 62, 66, 67, 68, 69, 72, 76,
                                          77, 78, 79, 82, 86, 87, 88, 89}));
  std::set<int> bf;
  for (int d = 1; d <= 5; ++d) {
    for (int u = 3; u <= 7; ++u) bf.insert(d * 10 + u);
  }
  for (int d = 6; d <= 8; ++d) {
    for (int u = 2; u <= 9; ++u) bf.insert(d * 10 + u);
  }
  EXPECT_EQ(definis(t.BF), bf);
  EXPECT_EQ(definis(t.CSOD), bf);

  for (const TableValeurs* table : {&t.PF, &t.BF, &t.CSOD}) {
    std::set<double> vus;
    for (int v = 0; v <= 100; ++v) {
      for (int c = 0; c <= 6; ++c) {
        const double p = (*table)[v].PrecPlan[c];
        if (p == kNonDefini) continue;
        EXPECT_TRUE(vus.insert(p).second) << p << " twice";
        // The decimal of every precision is the code's last digit.
        EXPECT_EQ(static_cast<int>(std::lround(p * 10)) % 10, v % 10) << p;
        EXPECT_EQ(c == 0, v < 59) << "code " << v << " column " << c;
      }
    }
  }
}

struct CasTable {
  int valeur;
  int colonne;
  double pf, bf, csod;  // -1: not defined
  int fiabPF, fiabBF, fiabCSOD;  // -1 where not defined
};

TEST(TablesValeurs, Contenus) {
  const CasTable cas[] = {
      {11, 0, 2.1, -1, -1, 1, -1, -1},        {12, 0, 3.2, -1, -1, 1, -1, -1},
      {13, 0, -1, 3.3, 3.3, -1, 1, 1},        {17, 0, -1, 13.7, 13.7, -1, 1, 0},
      {46, 0, -1, 116.6, 116.6, -1, 1, 1},    {55, 0, -1, 35.5, 35.5, -1, 0, 0},
      {57, 0, -1, 135.7, 135.7, -1, 1, 0},    {62, 3, 20.2, 20.2, 20.2, 1, 1, 1},
      {62, 0, -1, -1, -1, -1, -1, -1},        {75, 1, -1, 9.5, 9.5, -1, 0, 0},
      {75, 5, -1, 120.5, 120.5, -1, 0, 0},    {89, 6, 230.9, 230.9, 230.9, 0, 0, 0},
      {88, 2, 25.8, 25.8, 25.8, 0, 0, 0},     {67, 4, 40.7, 40.7, 40.7, 1, 1, 0},
      {58, 0, -1, -1, -1, -1, -1, -1},        {59, 3, -1, -1, -1, -1, -1, -1},
      {0, 0, -1, -1, -1, -1, -1, -1},         {100, 0, -1, -1, -1, -1, -1, -1},
  };
  const TablesValeurs& t = Tables();
  for (const CasTable& c : cas) {
    EXPECT_EQ(t.PF[c.valeur].PrecPlan[c.colonne], c.pf) << c.valeur;
    EXPECT_EQ(t.BF[c.valeur].PrecPlan[c.colonne], c.bf) << c.valeur;
    EXPECT_EQ(t.CSOD[c.valeur].PrecPlan[c.colonne], c.csod) << c.valeur;
    if (c.fiabPF >= 0) {
      EXPECT_EQ(t.PF[c.valeur].FiabPlan, c.fiabPF == 1) << c.valeur;
    }
    if (c.fiabBF >= 0) {
      EXPECT_EQ(t.BF[c.valeur].FiabPlan, c.fiabBF == 1) << c.valeur;
    }
    if (c.fiabCSOD >= 0) {
      EXPECT_EQ(t.CSOD[c.valeur].FiabPlan, c.fiabCSOD == 1) << c.valeur;
    }
  }
  // Altimetric part: only PF codes below 59.
  EXPECT_EQ(t.PF[12].PrecAlt, 4.1);
  EXPECT_EQ(t.PF[42].PrecAlt, 16.2);
  EXPECT_EQ(t.PF[62].PrecAlt, kNonDefini);
  EXPECT_EQ(t.BF[13].PrecAlt, kNonDefini);
}

struct CasPrecFiab {
  int theme, valeur, echelle;
  bool ok;
  const char* precPlan;
  char fiabPlan;
  const char* precAlt;
  char fiabAlt;
  const char* message;  // UTF-8, or null
};

TEST(Recherches, ValeurVersPrecisions) {
  const char* kRienPF = "Aucunes PrecPlan, FiabPlan, PrecAlt, FiabAlt définies pour cette valeur";
  const char* kRien = "Aucunes PrecPlan, FiabPlan définies pour cette valeur";
  const char* kTheme = "Problème lors de l'écriture des champs PrecPlan et FiabPlan: thème non supporté";
  const CasPrecFiab cas[] = {
      {2, 62, 3, true, " 20.2", 'O', "     ", ' ', nullptr},
      {1, 11, 4, true, "  2.1", 'O', "  3.1", 'O', nullptr},
      {1, 11, 0, true, "  2.1", 'O', "  3.1", 'O', nullptr},
      {71, 68, 1, true, "  8.8", 'N', "     ", ' ', nullptr},
      {81, 42, 6, true, " 10.2", 'O', " 16.2", 'O', nullptr},
      {1, 13, 1, false, "a", 'b', "c", 'd', kRienPF},
      {6, 11, 1, false, "a", 'b', "     ", ' ', kRien},
      {2, 13, 0, true, "  3.3", 'O', "     ", ' ', nullptr},
      {2, 62, 0, false, "a", 'b', "     ", ' ', kRien},
      {3, 58, 1, false, "a", 'b', "     ", ' ', kRien},
      {83, 59, 3, false, "a", 'b', "     ", ' ', kRien},
      {10, 17, 1, true, " 13.7", 'N', "     ", ' ', nullptr},
      {76, 17, 1, true, " 13.7", 'O', "     ", ' ', nullptr},
      {86, 89, 6, true, "230.9", 'N', "     ", ' ', nullptr},
      {4, 13, 1, false, "a", 'b', "c", 'd', kTheme},
      {99, 13, 1, false, "a", 'b', "c", 'd', kTheme},
      {0, 13, 1, false, "a", 'b', "c", 'd', kTheme},
  };
  for (const CasPrecFiab& c : cas) {
    JournalMemoire j(7);
    TextesPrecFiab t{"a", 'b', "c", 'd'};
    EXPECT_EQ(EcrirePrecFiabPlan(t, c.theme, static_cast<int16_t>(c.valeur), static_cast<int16_t>(c.echelle), j.journal),
              c.ok)
        << c.theme << "/" << c.valeur;
    EXPECT_EQ(t.PrecPlan, c.precPlan) << c.theme << "/" << c.valeur;
    EXPECT_EQ(t.FiabPlan, c.fiabPlan);
    EXPECT_EQ(t.PrecAlt, c.precAlt);
    EXPECT_EQ(t.FiabAlt, c.fiabAlt);
    if (c.message == nullptr) {
      EXPECT_TRUE(j.Lignes().empty());
      EXPECT_EQ(j.journal.NbErreursEcriture, 0);
    } else {
      EXPECT_EQ(j.Lignes(), std::vector<std::string>{"ECRITURE: ligne 7: " + W(c.message)});
      EXPECT_EQ(j.journal.NbErreursEcriture, 1);
    }
  }
}

struct CasValeur {
  int theme;
  double precPlan;
  int fiabPlan;
  bool ok;
  const char* texte;
  const char* message1;  // counted
  const char* message2;  // not counted
};

TEST(Recherches, PrecisionVersValeur) {
  const char* kAucune = "Aucune Valeur ne correspond à ces PrecPlan FiabPlan";
  const char* k11 =
      "Comme il s'agit vraisemblablement d'un PFP1 ou PFP2, la ligne a cependant été transférée avec une valeur = 11";
  const char* k99 = "La ligne a cependant été transférée avec une valeur = 99";
  const char* kIncoherent = "Le couple PrecPlan-FiabPlan n'est pas cohérent";
  const char* kTransferee = "La ligne a cependant été transférée";
  const char* kTheme = "Problème lors de l'écriture du champ Valeur: thème non supporté";
  const CasValeur cas[] = {
      {2, 20.2, 1, true, "62", nullptr, nullptr},
      {3, 8.8, 1, false, "68", kIncoherent, kTransferee},
      {3, 8.8, 2, true, "68", nullptr, nullptr},
      {2, 13.7, 2, true, "17", nullptr, nullptr},
      {6, 13.7, 2, false, "17", kIncoherent, kTransferee},
      {1, 2.0, 1, false, "11", kAucune, k11},
      {2, 2.1, 1, false, "99", kAucune, k99},
      {81, 3.1, 1, true, "21", nullptr, nullptr},
      {1, 0, 1, false, "11", kAucune, k11},
      {6, -1, 2, false, "99", kAucune, k99},
      {72, 3.3, 0, false, "13", kIncoherent, kTransferee},  // never set counts as "no"
      {83, 230.9, 2, true, "89", nullptr, nullptr},
      {10, 13.7, 2, false, "xx", kTheme, nullptr},
      {4, 13.7, 2, false, "xx", kTheme, nullptr},
  };
  for (const CasValeur& c : cas) {
    JournalMemoire j(3);
    std::string texte = "xx";
    EXPECT_EQ(EcrireValeur(texte, c.theme, c.precPlan, c.fiabPlan, j.journal), c.ok) << c.theme << "/" << c.precPlan;
    EXPECT_EQ(texte, c.texte) << c.theme << "/" << c.precPlan;
    std::vector<std::string> attendu;
    if (c.message1) attendu.push_back("ECRITURE: ligne 3: " + W(c.message1));
    if (c.message2) attendu.push_back("ECRITURE: ligne 3: " + W(c.message2));
    EXPECT_EQ(j.Lignes(), attendu);
    EXPECT_EQ(j.journal.NbErreursEcriture, c.message1 ? 1 : 0);
  }
}

TEST(Recherches, ValeurConnue) {
  JournalMemoire j;
  std::string texte;
  EXPECT_TRUE(EcrireValeurConnue(texte, 58, j.journal));
  EXPECT_EQ(texte, "58");
  EXPECT_TRUE(EcrireValeurConnue(texte, 5, j.journal));
  EXPECT_EQ(texte, " 5");
  EXPECT_FALSE(EcrireValeurConnue(texte, 123, j.journal));
  EXPECT_EQ(j.Lignes(), std::vector<std::string>{"ECRITURE: ligne 1: " + W("Problème lors de l'écriture du champ Valeur")});
}

}  // namespace
}  // namespace quillon
