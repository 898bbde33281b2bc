// The comparison's HTML report: one file that loads nothing, its one script
// allowed by its hash, every text from a file escaped, a moved point drawn
// from its old place to its new one.
#include <gtest/gtest.h>

#include "comparaison_js.h"
#include "report/comparaison_rapports.h"
#include "test_support.h"

namespace quillon {
namespace {

using test::DossierTemporaire;
using test::EcrireFichier;

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
  std::string erreur;
  ASSERT_TRUE(Comparer(ancien, nouveau, {}, c, erreur)) << erreur;
  const std::string html = RapportComparaisonHtml(c, "quillon-lot", "23-Nov-2026, 12:00:00");

  EXPECT_NE(html.find("default-src 'none'; script-src '" + std::string(kHashScriptComparaison) + "'"),
            std::string::npos);
  EXPECT_EQ(html.find("a<b>"), std::string::npos);
  EXPECT_NE(html.find("a&lt;b&gt;&amp;&#39;.ptv"), std::string::npos);
  EXPECT_EQ(html.find("</script><b>"), std::string::npos);  // the rejected line, escaped
  // In millimetres from the whole metres below the points: the old place, the
  // kind (moved), the new place; the arrows as long as the move, which
  // spans the picture.
  EXPECT_NE(html.find("\"f\":1,\"p\":[450,780,3,550,780]"), std::string::npos);
}

}  // namespace
}  // namespace quillon
