// The comparison: a delivery against itself, in its order or shuffled,
// holds no difference but its rejected lines and duplicates; and its HTML
// report, one file that loads nothing, its one script allowed by its hash,
// every text from a file escaped, a moved point drawn from its old place to
// its new one.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "comparaison_js.h"
#include "report/comparison_reports.h"
#include "test_support.h"

namespace quillon {
namespace {

using test::DossierTemporaire;
using test::EcrireFichier;
using test::LignesCRLF;
using test::LireFichier;

// n value lines of distinct numbers and places.
std::string Genere(int n) {
  std::string texte;
  for (int k = 1; k <= n; ++k) {
    char ligne[128];
    std::snprintf(ligne, sizeof ligne, "06 2361502%12d 2OR 77.  %11.3f 1200000.000 2541.360        borne     AB\r\n",
                  k, 2600000 + 0.5 * k);
    texte += ligne;
  }
  return texte;
}

struct CasSoiMeme {
  const char* nom;  // a file of the repository, or "" for Genere(3000)
  const char* extension;
  int64_t identiques, doublons, rejetes;  // rejected lines of one file
};

class ComparaisonSoiMeme : public ::testing::TestWithParam<CasSoiMeme> {};

TEST_P(ComparaisonSoiMeme, RienNeDiffereQueLesRejetsEtLesDoublons) {
  const CasSoiMeme& cas = GetParam();
  const std::string texte = *cas.nom ? LireFichier(std::string(QUILLON_E2E_DIR "/../../") + cas.nom) : Genere(3000);
  std::vector<std::string> lignes = LignesCRLF(texte);
  std::shuffle(lignes.begin(), lignes.end(), std::mt19937(12));
  std::string melange;
  for (const std::string& l : lignes) melange += l + "\r\n";
  DossierTemporaire d;
  EcrireFichier(d / "a" + cas.extension, texte);
  for (const std::string& autre : {texte, melange}) {
    EcrireFichier(d / "b" + cas.extension, autre);
    Comparaison c;
    ErreurFatale erreur;
    ASSERT_TRUE(Comparer(d / "a" + cas.extension, d / "b" + cas.extension, {}, c, erreur)) << CauseFatale(erreur);
    const std::array<int64_t, kNombreCategories> attendus = {0, 0, 0, 0, cas.doublons, 2 * cas.rejetes, cas.identiques};
    EXPECT_EQ(c.totaux, attendus) << (&autre == &texte ? "in order" : "shuffled");
    EXPECT_EQ(c.differences.size(), static_cast<std::size_t>(cas.doublons + 2 * cas.rejetes));
  }
}

INSTANTIATE_TEST_SUITE_P(Fichiers, ComparaisonSoiMeme,
                         ::testing::Values(CasSoiMeme{"samples/lot12.ptv", ".ptv", 8, 0, 2},
                                           CasSoiMeme{"samples/lot12.ptp", ".ptp", 10, 0, 2},
                                           CasSoiMeme{"samples/lot12.pts", ".pts", 5, 0, 3},
                                           CasSoiMeme{"tests/report/sans-rejet.ptv", ".ptv", 15, 0, 0},
                                           CasSoiMeme{"tests/report/avec-rejets.ptv", ".ptv", 6, 1, 3},
                                           CasSoiMeme{"", ".ptv", 3000, 0, 0}));

TEST(RapportComparaison, UnFichierQuiNeChargeRien) {
  DossierTemporaire d;
  const std::string ligne =
      "01  12  34      100101 1OR 11.  2600123.450 1200456.780  450.120        borne        BO\r\n";
  std::string deplacee = ligne;
  deplacee.replace(32, 11, "2600123.550");
  const std::string ancien = d / "a<b>&'.ptv", nouveau = d / "n.ptv";
  EcrireFichier(ancien, ligne + "</script><b>\r\n");
  EcrireFichier(nouveau, deplacee);
  Comparaison c;
  ErreurFatale erreur;
  ASSERT_TRUE(Comparer(ancien, nouveau, {}, c, erreur)) << CauseFatale(erreur);
  const std::string html = RapportComparaisonHtml(c, "quillon-lot", "23-Nov-2026, 12:00:00");

  EXPECT_NE(html.find("default-src 'none'; script-src '" + std::string(kHashScriptComparaison) + "'"),
            std::string::npos);
  EXPECT_EQ(html.find("a<b>"), std::string::npos);
  EXPECT_NE(html.find("a&lt;b&gt;&amp;&#39;.ptv"), std::string::npos);
  EXPECT_EQ(html.find("</script><b>"), std::string::npos);  // the rejected line, escaped
  // In millimetres from the whole metres below the points: the old place, the
  // kind (moved, the fourth named), the new place; the arrows as long as the
  // move, which spans the picture.
  EXPECT_NE(html.find("\"sortes\":[\"identique\",\"nouveau\",\"supprime\",\"deplace\","), std::string::npos);
  EXPECT_NE(html.find("\"f\":1,\"p\":[450,780,3,550,780]"), std::string::npos);
}

}  // namespace
}  // namespace quillon
