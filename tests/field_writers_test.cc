#include <gtest/gtest.h>

#include <functional>

#include "formats/field_writers.h"
#include "test_support.h"

namespace quillon {
namespace {

using test::JournalMemoire;
using test::W;

struct CasEcriture {
  const char* nom;
  std::function<bool(std::string&, Journal&)> ecrire;
  const char* texte;    // appended to the line
  const char* message;  // UTF-8, empty when it succeeds
};

TEST(EcrivainsDeChamps, TextesEtMessages) {
  const char* kTheme = "Problème lors de l'écriture du thème";
  const CasEcriture cas[] = {
      {"theme 1", [](auto& l, auto& j) { return EcrireThemePtVal(l, 1, j); }, "01", ""},
      {"theme 89", [](auto& l, auto& j) { return EcrireThemePtVal(l, 89, j); }, "89", ""},
      {"theme 99", [](auto& l, auto& j) { return EcrireThemePtVal(l, 99, j); }, "99", ""},
      {"theme 10", [](auto& l, auto& j) { return EcrireThemePtVal(l, 10, j); }, "  ", kTheme},
      {"theme 5", [](auto& l, auto& j) { return EcrireThemePtVal(l, 5, j); }, "  ", kTheme},
      {"ptp substitution OD", [](auto& l, auto& j) { return EcrireThemePtPrecFiab(l, 10, 3, true, j); }, "03", ""},
      {"ptp substitution CS", [](auto& l, auto& j) { return EcrireThemePtPrecFiab(l, 10, 2, true, j); }, "02", ""},
      {"ptp substitution none", [](auto& l, auto& j) { return EcrireThemePtPrecFiab(l, 10, 0, true, j); }, "  ", ""},
      {"ptp no substitution", [](auto& l, auto& j) { return EcrireThemePtPrecFiab(l, 10, 3, false, j); }, "  ", kTheme},
      {"md01 BF", [](auto& l, auto& j) { return EcrireThemeMD01(l, 6, j); }, "BF", ""},
      {"md01 4", [](auto& l, auto& j) { return EcrireThemeMD01(l, 4, j); }, "  ",
       "Problème lors de l'écriture du thème, ce thème n'est pas supporté"},
      {"commune 1", [](auto& l, auto& j) { return EcrireCommune(l, 1, j); }, "   1", ""},
      {"commune 400", [](auto& l, auto& j) { return EcrireCommune(l, 400, j); }, " 400", ""},
      {"commune -1234", [](auto& l, auto& j) { return EcrireCommune(l, -1234, j); }, "-1234",
       "Problème lors de l'écriture du numéro de commune"},
      {"plan 0", [](auto& l, auto& j) { return EcrirePlan(l, 0, j); }, "    ", ""},
      {"plan 2999", [](auto& l, auto& j) { return EcrirePlan(l, 2999, j); }, "2999", ""},
      {"plan 12345", [](auto& l, auto& j) { return EcrirePlan(l, 12345, j); }, "12345",
       "Problème lors de l'écriture du numéro de plan"},
      {"kq", [](auto& l, auto& j) { return EcrireCommunePlanMD01(l, 123, 45, j); }, "KQ0123000045", ""},
      {"kq small", [](auto& l, auto& j) { return EcrireCommunePlanMD01(l, 5, 12, j); }, "KQ0005000012", ""},
      {"point blanks", [](auto& l, auto& j) { return EcrireNumeroPoint(l, "      123456", j); }, "      123456", ""},
      {"point bare", [](auto& l, auto& j) { return EcrireNumeroPoint(l, "123456", j); }, "      123456", ""},
      {"point left", [](auto& l, auto& j) { return EcrireNumeroPoint(l, "12  ", j); }, "          12", ""},
      {"nature 6", [](auto& l, auto& j) { return EcrireNature(l, 6, j); }, " 6", ""},
      {"nature 0", [](auto& l, auto& j) { return EcrireNature(l, 0, j); }, "", "Problème lors de l'écriture de la nature"},
      {"nature md01 1", [](auto& l, auto& j) { return EcrireNatureMD01(l, 1, j); }, "0", ""},
      {"nature md01 3", [](auto& l, auto& j) { return EcrireNatureMD01(l, 3, j); }, "5", ""},
      {"nature md01 5", [](auto& l, auto& j) { return EcrireNatureMD01(l, 5, j); }, "6", ""},
      {"nature md01 7", [](auto& l, auto& j) { return EcrireNatureMD01(l, 7, j); }, "", "Problème lors de l'écriture de la nature"},
      {"pfp3 O", [](auto& l, auto& j) { return EcrireFichePFP3(l, 1, j); }, "O", ""},
      {"pfp3 never set", [](auto& l, auto& j) { return EcrireFichePFP3(l, 0, j); }, " ", ""},
      {"pfp3 md01 blank", [](auto& l, auto& j) { return EcrireFichePFP3MD01(l, 3, j); }, "1", ""},
      {"pfp3 md01 O", [](auto& l, auto& j) { return EcrireFichePFP3MD01(l, 1, j); }, "0", ""},
      {"defini theme 1", [](auto& l, auto& j) { return EcrireDefiniExactementMD01(l, 1, 6, j); }, " ", ""},
      {"defini nature 6", [](auto& l, auto& j) { return EcrireDefiniExactementMD01(l, 2, 6, j); }, "1", ""},
      {"defini nature 5", [](auto& l, auto& j) { return EcrireDefiniExactementMD01(l, 2, 5, j); }, "0", ""},
      {"borne theme 1", [](auto& l, auto& j) { return EcrireAncienneBorneSpecialeMD01(l, 1, j); }, " ", ""},
      {"borne theme 3", [](auto& l, auto& j) { return EcrireAncienneBorneSpecialeMD01(l, 3, j); }, "1", ""},
      {"y", [](auto& l, auto& j) { return EcrireCoordonneeY(l, 538123.45, j); }, " 538123.450", ""},
      {"y full", [](auto& l, auto& j) { return EcrireCoordonneeY(l, 2538123.456, j); }, "2538123.456", ""},
      {"y negative", [](auto& l, auto& j) { return EcrireCoordonneeY(l, -999999.999, j); }, "-999999.999", ""},
      {"x too long", [](auto& l, auto& j) { return EcrireCoordonneeX(l, 10000000, j); }, "10000000.000",
       "Problème lors de l'écriture de la coordonnée X"},
      {"altitude 0", [](auto& l, auto& j) { return EcrireAltitude(l, 0, j); }, "        ", ""},
      {"altitude tiny", [](auto& l, auto& j) { return EcrireAltitude(l, 0.0004, j); }, "    .000", ""},
      {"altitude 9999.999", [](auto& l, auto& j) { return EcrireAltitude(l, 9999.999, j); }, "9999.999", ""},
      {"altitude too long", [](auto& l, auto& j) { return EcrireAltitude(l, 12345.678, j); }, "12345.678",
       "Problème lors de l'écriture de l'altitude"},
  };
  for (const CasEcriture& c : cas) {
    JournalMemoire j(4);
    std::string ligne = "|";
    const bool attenduOk = std::string(c.message).empty();
    EXPECT_EQ(c.ecrire(ligne, j.journal), attenduOk) << c.nom;
    EXPECT_EQ(ligne, std::string("|") + c.texte) << c.nom;
    if (attenduOk) {
      EXPECT_TRUE(j.Lignes().empty()) << c.nom;
    } else {
      EXPECT_EQ(j.Lignes(), std::vector<std::string>{"ECRITURE: ligne 4: " + W(c.message)}) << c.nom;
      EXPECT_EQ(j.journal.NbErreursEcriture, 1);
    }
  }
}

TEST(EcrivainsDeChamps, PrecisionsMD01) {
  JournalMemoire j;
  TextesPrecFiabMD01 t;
  EXPECT_TRUE(EcrirePrecFiabMD01(t, 3.5, 1, 0.5, 2, j.journal));
  EXPECT_EQ(t.PrecPlan, "  3.5");
  EXPECT_EQ(t.FiabPlan, '0');
  EXPECT_EQ(t.PrecAlt, "   .5");
  EXPECT_EQ(t.FiabAlt, '1');
  EXPECT_TRUE(EcrirePrecFiabMD01(t, 999.9, 0, 0, 0, j.journal));
  EXPECT_EQ(t.FiabPlan, '1') << "a reliability never set is written as no";
  EXPECT_FALSE(EcrirePrecFiabMD01(t, 999.95, 1, 1, 1, j.journal));
  EXPECT_EQ(j.Lignes(),
            std::vector<std::string>{"ECRITURE: ligne 1: " + W("Problème lors de l'écriture des champs Precxxxx et Fiabxxxx")});
}

}  // namespace
}  // namespace quillon
