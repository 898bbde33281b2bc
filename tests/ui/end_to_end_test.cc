// A DC file converted into a value file the way a user does it: Ouvrir with
// the DC filter, Enregistrer sous, Convertir in the dialog.
#include <QComboBox>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "banc.h"
#include "test_support.h"
#include "io/encoding.h"
#include "ui/qt/option_dialogs.h"

namespace quillon::test {
namespace {

// Commune 123, plan 45, point 1001, nature 1, value 62, altitude 450.1 and a
// comment; then a nature "6" point with no altitude and no comment; then a
// line with a commune out of range and a Y short of the millimetre.
const std::string kLigne3 = "401   3      0007  2 13  38000.500100000.000";
const std::string kSource =
    "123  45      1001  1 62 538000.500152000.250   450.1                BORNE\r\n"
    "  71200        12  6 63 612345.678198765.432\r\n" +
    kLigne3 + "\r\n";

// By hand from the value-file layout: theme, commune, plan, point number,
// nature, PFP3 sheet, "R", the value as " 62. ", Y, X, altitude, eight
// blanks, comment, " ", type.
std::string Cible(const char* theme2) {
  return "01 123  45        1001 1 R 62.   538000.500  152000.250  450.100        BORNE \r\n" + std::string(theme2) +
         "   71200          12 5 R 63.   612345.678  198765.432" + std::string(1 + 8 + 8 + 1, ' ') + "\r\n";
}

TEST(BoutEnBout, FichierDCVersFichierValeurParLesFenetres) {
  const struct {
    int theme;  // index in lstTheme; -1: left as it is
    const char* theme2;
  } kCas[] = {{-1, "02"}, {1, "03"}};
  for (const auto& cas : kCas) {
    SCOPED_TRACE(cas.theme2);
    Banc banc;
    const std::string source = banc.Chemin("lot.pts"), cible = banc.Chemin("lot.ptv");
    EcrireFichier(source, kSource);
    banc.Ouvrir("lot.pts", 3);
    banc.EnregistrerSous("lot.ptv", 1);
    frmConvertirPtDCEnPtVal* dialogue = banc.fenetre->DialogueDCVal();
    ASSERT_NE(dialogue, nullptr);
    EXPECT_FALSE(LireFichier(cible));  // nothing before Convertir
    if (cas.theme >= 0) dialogue->findChild<QComboBox*>(QStringLiteral("lstTheme"))->setCurrentIndex(cas.theme);
    QTest::mouseClick(dialogue->findChild<QPushButton*>(QStringLiteral("btnConvertir")), Qt::LeftButton);
    EXPECT_FALSE(dialogue->isVisible());

    EXPECT_EQ(LireFichier(cible), Cible(cas.theme2));

    const std::string journal = MasquerDate(LireFichier(source + ".log").value_or(""));
    EXPECT_EQ(journal, Utf8VersCp1252("Traduction de fichier de point de DC en Valeur\r\n"
                                      "<date>\r\n"
                                      "Fichier source:\r\n" + source + "\r\n"
                                      "Fichier cible:\r\n" + cible + "\r\n"
                                      "LECTURE: ligne 3: Le numéro de commune: '401' n'est pas valide\r\n"
                                      "LECTURE: ligne 3: La coordonnée Y: '38000.500' doit être au millimètre\r\n" +
                                      kLigne3 + "\r\n" +
                                      TexteBilan(3, 0, 2, 0) + "\r\n"));

    ASSERT_EQ(banc.boites.boites.size(), 1u);
    EXPECT_EQ(banc.boites.boites[0].titre, "Quillon");
    EXPECT_EQ(banc.boites.boites[0].texte, TexteBilan(3, 0, 2, 0));
  }
}

}  // namespace
}  // namespace quillon::test
