// The language chosen and the texts in it: the variables read as gettext
// reads them, the catalogues compiled in, and the placeholders filled.
#include <gtest/gtest.h>

#include "app/batch/options.h"
#include "io/translation.h"

namespace quillon::test {
namespace {

// Restores French, whatever a test chose.
struct EnFrancais : ::testing::Test {
  ~EnFrancais() override { ChoisirLangue(Langue::Francais); }
};

TEST(Langue, VariablesCommeGettext) {
  struct Cas {
    const char *language, *lcAll, *lcMessages, *lang;
    Langue attendue;
  };
  const Cas cas[] = {
      {nullptr, nullptr, nullptr, nullptr, Langue::Francais},
      {nullptr, nullptr, nullptr, "de_CH.UTF-8", Langue::Allemand},
      {nullptr, nullptr, "it_CH.UTF-8", "de_CH.UTF-8", Langue::Italien},  // LC_MESSAGES before LANG
      {nullptr, "fr_CH.UTF-8", "it_CH", "de_CH", Langue::Francais},       // LC_ALL before both
      {"", "", "", "it_IT@euro", Langue::Italien},                        // empty is unset
      {nullptr, nullptr, nullptr, "en_GB.UTF-8", Langue::Francais},       // any other: French
      {nullptr, nullptr, nullptr, "deu", Langue::Francais},               // not "de"
      {"en:it:de", nullptr, nullptr, "de_CH.UTF-8", Langue::Italien},     // LANGUAGE's first known
      {"en_US:pt", nullptr, nullptr, "de_CH.UTF-8", Langue::Allemand},    // none known: the locale's
      {"it", "C", nullptr, nullptr, Langue::Francais},                    // LANGUAGE ignored under C
      {"de", "C.UTF-8", nullptr, nullptr, Langue::Francais},
      {"de", nullptr, nullptr, "POSIX", Langue::Francais},
      {"de:", nullptr, nullptr, "fr_CH.UTF-8", Langue::Allemand},
  };
  for (const Cas& c : cas) {
    EXPECT_EQ(LangueDesVariables(c.language, c.lcAll, c.lcMessages, c.lang), c.attendue)
        << (c.language ? c.language : "-") << " " << (c.lcAll ? c.lcAll : "-") << " "
        << (c.lcMessages ? c.lcMessages : "-") << " " << (c.lang ? c.lang : "-");
  }
  for (const char* code : {"fr", "de", "it"}) EXPECT_EQ(CodeLangue(*LangueDuCode(code)), code);
  EXPECT_FALSE(LangueDuCode("en") || LangueDuCode("") || LangueDuCode("DE"));
}

TEST_F(EnFrancais, CataloguesCompiles) {
  const char* texte = "aucune source";
  EXPECT_EQ(Traduire(texte), texte) << "French is the code's own text";
  ChoisirLangue(Langue::Allemand);
  EXPECT_STREQ(Traduire(texte), "keine Quelle");
  EXPECT_STREQ(Traduire("un texte sans traduction"), "un texte sans traduction");
  EXPECT_STREQ(Traduire(""), "") << "not the catalogue's header";
  ChoisirLangue(Langue::Italien);
  EXPECT_STREQ(Traduire(texte), "nessuna sorgente");
  EXPECT_EQ(Formater("%s attend un dossier", {"--sortie"}), "--sortie attende una cartella");
  // Every text of the usage and of the help has its translation.
  for (const Langue langue : {Langue::Allemand, Langue::Italien}) {
    ChoisirLangue(langue);
    EXPECT_EQ(std::string(lot::TexteUsage()).find("usage :"), std::string::npos);
    const std::string aide = lot::TexteAide();
    for (const char* francais : {"usage :", "Options :", "Codes de sortie", "Comparaison ("}) {
      EXPECT_EQ(aide.find(francais), std::string::npos) << francais;
    }
  }
}

TEST_F(EnFrancais, Formater) {
  struct Cas {
    const char* modele;
    std::initializer_list<std::string_view> valeurs;
    std::string attendu;
  };
  const Cas cas[] = {
      {"%s et %s", {"a", "b"}, "a et b"},
      {"%2$s puis %1$s", {"a", "b"}, "b puis a"},
      {"100 %% de %s", {"x"}, "100 % de x"},
      {"%s, %s", {"seul"}, "seul, %s"},    // a value missing: left as written
      {"%d et %s", {"a"}, "%d et a"},      // not ours
      {"fin %", {}, "fin %"},
      {"%s", {"%s"}, "%s"},                // a value is never read again
  };
  for (const Cas& c : cas) EXPECT_EQ(Formater(c.modele, c.valeurs), c.attendu) << c.modele;
}

// --langue is read before the other options, so that their errors are in it.
TEST_F(EnFrancais, LangueDemandee) {
  using M = std::vector<std::string>;
  EXPECT_EQ(lot::LangueDemandee(M{"-e", "33", "--langue=de"}), Langue::Allemand);
  EXPECT_EQ(lot::LangueDemandee(M{"--langue", "it", "a.ptv"}), Langue::Italien);
  EXPECT_EQ(lot::LangueDemandee(M{"--langue=xx"}), std::nullopt);
  EXPECT_EQ(lot::LangueDemandee(M{"--", "--langue=de"}), std::nullopt) << "a source's name";
  EXPECT_EQ(lot::LireOptions(M{"--langue", "de", "a.ptv"}).options.langue, Langue::Allemand);
  EXPECT_EQ(lot::LireOptions(M{"--langue=en", "a.ptv"}).erreur, "--langue attend fr, de ou it, pas « en »");
}

}  // namespace
}  // namespace quillon::test
