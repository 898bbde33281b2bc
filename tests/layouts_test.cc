#include <gtest/gtest.h>

#include "formats/ptm_format.h"
#include "formats/ptp_format.h"
#include "formats/pts_format.h"
#include "formats/ptv_format.h"
#include "test_support.h"

namespace quillon {
namespace {

using test::JournalMemoire;
using test::LigneFixe;
using test::W;

// A precision line, field by field in its columns.
std::string Ptp(const char* theme, const char* commune, const char* plan, const char* numero, const char* nature,
                const char* pfp3, const char* fiabPlan, const char* precPlan, const char* y, const char* x,
                const char* altitude, const char* fiabAlt, const char* precAlt, const char* commentaire,
                const char* type) {
  return LigneFixe()
      .Colonne(1, theme).Colonne(3, commune).Colonne(7, plan).Colonne(11, numero).Colonne(23, nature)
      .Colonne(25, pfp3).Colonne(26, fiabPlan).Colonne(27, precPlan).Colonne(33, y).Colonne(45, x)
      .Colonne(57, altitude).Colonne(66, fiabAlt).Colonne(67, precAlt).Colonne(73, commentaire).Colonne(86, type)
      .str();
}

// A value line, field by field in its columns.
std::string Ptv(const char* theme, const char* commune, const char* plan, const char* numero, const char* nature,
                const char* pfp3, const char* valeur, const char* y, const char* x, const char* altitude,
                const char* commentaire, const char* type) {
  return LigneFixe()
      .Colonne(1, theme).Colonne(3, commune).Colonne(7, plan).Colonne(11, numero).Colonne(23, nature)
      .Colonne(25, pfp3).Colonne(26, "R").Colonne(27, " ").Colonne(28, valeur).Colonne(30, ". ").Colonne(33, y)
      .Colonne(45, x).Colonne(57, altitude).Colonne(65, "        ").Colonne(73, commentaire).Colonne(86, type)
      .str();
}

// The two MD01 worked examples: a situation point of commune 5, plan 12,
// without and with an altitude.
TEST(FichierMD01, ExemplesDeReference) {
  struct Cas {
    const char *altitude, *fiabAlt, *precAlt;
    const char* attendu;
  };
  const std::string debut =
      "CS KQ0005000012         1001 0101  538000.500  152000.250 1 10.0";
  const Cas cas[] = {
      {"        ", " ", "     ", ""},
      {" 450.1  ", "O", "  5.0", "  450.100 0  5.0"},
  };
  for (const Cas& c : cas) {
    JournalMemoire j;
    Point p;
    const std::string source = Ptp(" 2", "   5", "  12", "        1001", " 1", " ", "N", " 10.0", "  538000.5",
                                   "  152000.25", c.altitude, c.fiabAlt, c.precAlt, "", "");
    ASSERT_TRUE(LireLignePtPrecFiab(source, p, j.journal)) << j.Lignes().front();
    std::string cible;
    ASSERT_TRUE(EcrireLignePtMD01(source, p, cible, j.journal));
    EXPECT_EQ(cible, debut + c.attendu);
    EXPECT_EQ(cible.size(), *c.attendu ? 80u : 64u);
  }
}

TEST(FichierMD01, ThemesEtColonnesDrapeaux) {
  JournalMemoire j(9);
  Point p;
  ASSERT_TRUE(LireLignePtPrecFiab(Ptp("01", " 400", "2999", "7", " 6", "O", "O", "  2.1", "2600000.000",
                                      "1200000.000", "        ", "", "", "", ""),
                                  p, j.journal));
  std::string cible;
  ASSERT_TRUE(EcrireLignePtMD01("src", p, cible, j.journal));
  EXPECT_EQ(cible, "PF KQ0400002999            7 60   2600000.000 1200000.000 0  2.1");

  p.Theme = 7;
  EXPECT_FALSE(EcrireLignePtMD01("la ligne source", p, cible, j.journal));
  EXPECT_EQ(j.Lignes(), (std::vector<std::string>{
                            "ECRITURE: ligne 9: " + W("Problème lors de l'écriture du thème, ce thème n'est pas supporté"),
                            "la ligne source"}));
}

TEST(FichierPrecision, LectureRejetteEtRecopieLaLigne) {
  JournalMemoire j(3);
  Point p;
  const std::string ligne = Ptp("05", "0000", "  12", "        1001", " 1", " ", "N", " 10.0", "  538000.5",
                                "  152000.25", "", "", "", "", "");
  EXPECT_FALSE(LireLignePtPrecFiab(ligne, p, j.journal));
  EXPECT_EQ(j.Lignes(), (std::vector<std::string>{"LECTURE: ligne 3: " + W("Le numéro de thème: '05' n'est pas valide"),
                                                  "LECTURE: ligne 3: " + W("Le numéro de commune: '0000' n'est pas valide"),
                                                  ligne}));
  EXPECT_EQ(j.journal.NbErreursLecture, 2);
}

TEST(FichierPrecision, Ligne26CaracteresRejeteePourPrecPlanYX) {
  JournalMemoire j;
  Point p;
  const std::string ligne = Ptp("01", "   1", "   1", "           1", " 1", " ", "O", "", "", "", "", "", "", "", "");
  ASSERT_EQ(ligne.size(), 26u);
  EXPECT_FALSE(LireLignePtPrecFiab(ligne, p, j.journal));
  EXPECT_EQ(j.Lignes(), (std::vector<std::string>{"LECTURE: ligne 1: " + W("La précision planimétrique: '' n'est pas valide"),
                                                  "LECTURE: ligne 1: " + W("La coordonnée Y: '' n'est pas valide"),
                                                  "LECTURE: ligne 1: " + W("La coordonnée X: '' n'est pas valide"),
                                                  ligne}));
}

struct CasValEnPrec {
  const char* nom;
  std::string source;
  int16_t echelle;
  int32_t groupe;
  bool ok;
  std::string attendu;  // the target line, when ok
  std::vector<std::string> journal;
};

TEST(FichierPrecision, EcritureDepuisUneLigneDeValeur) {
  const std::string p11 = Ptv("01", "   1", "  12", "        1001", " 1", "O", "11", "  538000.500", " 152000.250",
                              " 450.100", "commentaire1", "AB");
  const std::string p62 = Ptv("02", "   1", "  12", "        1002", " 2", "N", "62", "  538000.500", " 152000.250",
                              " 450.100", "", "");
  const std::string blanc5 = Ptv("  ", "  17", "   3", "          55", " 5", " ", "14", "  600000.000", " 200000.000",
                                 "        ", "c", "T");
  const std::string blanc1 = Ptv("  ", "  17", "   3", "          55", " 1", " ", "14", "  600000.000", " 200000.000",
                                 "        ", "c", "T");
  const CasValEnPrec cas[] = {
      {"fixed point with altitude", p11, 1, 2, true,
       "01   1  12        1001 1OO  2.1  538000.500  152000.250  450.100 O  3.1 commentaire1 AB", {}},
      {"theme 2 altitude leaves 65-72 blank", p62, 3, 2, true,
       "02   1  12        1002 2NO 20.2  538000.500  152000.250  450.100         ", {}},
      {"code 62 without scale", p62, 0, 2, false, "",
       {"ECRITURE: ligne 5: " + W("Aucunes PrecPlan, FiabPlan définies pour cette valeur"), p62}},
      {"blank theme, nature 5, OD", blanc5, 2, 3, true,
       "03  17   3          55 5 O  3.4  600000.000  200000.000                 c            T", {}},
      {"blank theme, nature 5, no group", blanc5, 2, 0, true,
       "    17   3          55 5 O  3.4  600000.000  200000.000                 c            T", {}},
      {"blank theme, nature 1", blanc1, 2, 3, false, "",
       {"ECRITURE: ligne 5: " + W("Problème lors de l'écriture du thème"), blanc1}},
  };
  for (const CasValEnPrec& c : cas) {
    JournalMemoire j(5);
    Point p;
    ASSERT_TRUE(LireLignePtVal(c.source, p, j.journal)) << c.nom;
    std::string cible;
    EXPECT_EQ(EcrireLignePtPrecFiab(c.source, p, c.echelle, c.groupe, cible, j.journal), c.ok) << c.nom;
    if (c.ok) {
      EXPECT_EQ(cible, c.attendu) << c.nom;
    }
    EXPECT_EQ(j.Lignes(), c.journal) << c.nom;
  }
}

TEST(FichierPrecision, UneLigneEcriteSeRelitALIdentique) {
  JournalMemoire j;
  Point p;
  const std::string source = Ptv("81", " 400", "2999", "      123456", " 3", "N", "42", "600000.1234",
                                 "200000.0006", "-12.5", "comm", "ty");
  ASSERT_TRUE(LireLignePtVal(source, p, j.journal));
  std::string cible;
  ASSERT_TRUE(EcrireLignePtPrecFiab(source, p, 1, 2, cible, j.journal));
  Point relu;
  ASSERT_TRUE(LireLignePtPrecFiab(cible, relu, j.journal)) << cible;
  EXPECT_EQ(relu.Theme, 81);
  EXPECT_EQ(relu.NoCommune, 400);
  EXPECT_EQ(relu.NoPlan, 2999);
  EXPECT_EQ(relu.NoPoint, "      123456");
  EXPECT_EQ(relu.Nature, 3);
  EXPECT_EQ(relu.FichePFP3, 2);
  EXPECT_EQ(relu.PrecPlan, 10.2);
  EXPECT_EQ(relu.FiabPlan, 1);
  EXPECT_EQ(relu.CoordY, 600000.123);
  EXPECT_EQ(relu.CoordX, 200000.001);
  EXPECT_EQ(relu.Altitude, -12.5);
  EXPECT_EQ(relu.PrecAlt, 16.2);
  EXPECT_EQ(relu.FiabAlt, 1);
  EXPECT_EQ(relu.Commentaire, "comm        ");
  EXPECT_EQ(relu.Type, "ty");
}

struct CasPrecEnVal {
  const char* nom;
  std::string source;
  bool ok;
  std::string attendu;
  std::vector<std::string> journal;
};

TEST(FichierValeur, EcritureDepuisUneLigneDePrecision) {
  const std::string ok2 = Ptp("02", "   1", "  12", "        1001", " 1", "O", "O", " 20.2", "  538000.500",
                              " 152000.250", "", "", "", "commentaire1", "AB");
  const std::string pf = Ptp("71", "   1", "  12", "        1001", " 1", "N", "O", "  2.0", "  538000.500",
                             " 152000.250", "", "", "", "", "");
  const std::string blanc = Ptp("  ", "   1", "  12", "        1001", " 1", " ", "O", "  3.3", "  538000.500",
                                " 152000.250", "", "", "", "", "");
  const std::string theme4 = Ptp("04", "   1", "  12", "        1001", " 1", " ", "O", "  3.3", "  538000.500",
                                 " 152000.250", "", "", "", "", "");
  const CasPrecEnVal cas[] = {
      {"theme 2, PFP3 not written", ok2, true,
       "02   1  12        1001 1 R 62.   538000.500  152000.250                 commentaire1 AB", {}},
      {"fallback 11 still written", pf, true,
       "71   1  12        1001 1NR 11.   538000.500  152000.250                  ",
       {"ECRITURE: ligne 2: " + W("Aucune Valeur ne correspond à ces PrecPlan FiabPlan"),
        "ECRITURE: ligne 2: " + W("Comme il s'agit vraisemblablement d'un PFP1 ou PFP2, la ligne a cependant été "
                                  "transférée avec une valeur = 11"),
        pf}},
      {"blank theme not written", blanc, false, "",
       {"ECRITURE: ligne 2: " + W("Problème lors de l'écriture du thème"),
        "ECRITURE: ligne 2: " + W("Problème lors de l'écriture du champ Valeur: thème non supporté"), blanc}},
      {"theme 4 written with a blank value", theme4, true,
       "04   1  12        1001 1 R   .   538000.500  152000.250                  ",
       {"ECRITURE: ligne 2: " + W("Problème lors de l'écriture du champ Valeur: thème non supporté"), theme4}},
  };
  for (const CasPrecEnVal& c : cas) {
    JournalMemoire j(2);
    Point p;
    ASSERT_TRUE(LireLignePtPrecFiab(c.source, p, j.journal)) << c.nom;
    std::string cible;
    EXPECT_EQ(EcrireLignePtVal(c.source, false, p, cible, j.journal), c.ok) << c.nom;
    if (c.ok) {
      EXPECT_EQ(cible, c.attendu) << c.nom;
      EXPECT_EQ(cible.size(), c.attendu.size());
    }
    EXPECT_EQ(j.Lignes(), c.journal) << c.nom;
  }
}

TEST(FichierValeur, ColonnesNonLuesIndifferentes) {
  JournalMemoire j;
  Point a, b;
  std::string ligne = Ptv("06", "   1", "  12", "        1001", " 1", " ", "17", "  538000.500", " 152000.250", "",
                          "", "");
  ASSERT_TRUE(LireLignePtVal(ligne, a, j.journal));
  ligne[26] = 'x';
  ligne[29] = 'y';
  ligne[30] = 'z';
  ligne[31] = 'w';
  ASSERT_TRUE(LireLignePtVal(ligne, b, j.journal));
  EXPECT_EQ(a.Valeur, b.Valeur);
  EXPECT_EQ(a.CoordY, b.CoordY);
}

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

TEST(FichierDC, EcritEnFichierDeValeur) {
  JournalMemoire j;
  Point p;
  const std::string ligne = Dc("400", "  12", "  12", " 1", "11", "538000.500", "152000.250", "  450.10", "borne");
  ASSERT_TRUE(LireLignePtDC(ligne + "   ignored beyond 73", 2, p, j.journal));
  EXPECT_EQ(p.NoPoint, "  12");
  EXPECT_EQ(p.FichePFP3, 0);
  std::string cible;
  ASSERT_TRUE(EcrireLignePtVal(ligne, true, p, cible, j.journal));
  EXPECT_EQ(cible, "01 400  12          12 1 R 11.   538000.500  152000.250  450.100        borne ");
  EXPECT_EQ(cible.size(), 78u);
}

}  // namespace
}  // namespace quillon
