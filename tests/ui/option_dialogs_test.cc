// The option dialogs: their choices, how long they keep them, and the
// options that reach the conversion.
#include <set>

#include <QComboBox>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "banc.h"
#include "conversion/conversions.h"
#include "ui/qt/option_dialogs.h"

namespace quillon::test {
namespace {

QComboBox* Liste(QWidget* dialogue, const char* nom) { return dialogue->findChild<QComboBox*>(QLatin1String(nom)); }
QPushButton* Bouton(QWidget* dialogue, const char* nom) {
  return dialogue->findChild<QPushButton*>(QLatin1String(nom));
}

frmConvertirPtValEnPtPrecFiab* MontrerValPrecFiab(Banc& banc) {
  banc.EnregistrerSous("c.ptp", 1);
  return banc.fenetre->DialogueValPrecFiab();
}

TEST(DialoguesOptions, EchelleEtThemeChoisisArriventALaConversion) {
  // Value code 62 of theme 2, then of a blank theme with nature 5: the
  // precision written depends on the scale, the theme of the second line on
  // the theme group.
  const auto ligne = [](const char* theme, const char* nature) {
    return std::string(theme) + "   5  12        1001" + nature + " R 62.   538000.500  152000.250 " +
           std::string(16, ' ') + "BORNE          \r\n";
  };
  Banc banc;
  EcrireFichier(banc.Chemin("s.ptv"), ligne("02", " 1") + ligne("  ", " 5"));
  banc.Ouvrir("s.ptv", 1);
  std::set<std::string> cibles;
  for (int echelle = 0; echelle < 6; ++echelle) {
    for (int theme = 0; theme < 2; ++theme) {
      frmConvertirPtValEnPtPrecFiab* dialogue = MontrerValPrecFiab(banc);
      bool visible = true;
      banc.boites.pendantLaBoite = [&] { visible = dialogue->isVisible(); };
      Liste(dialogue, "lstEchelle")->setCurrentIndex(echelle);
      Liste(dialogue, "lstTheme")->setCurrentIndex(theme);
      QTest::mouseClick(Bouton(dialogue, "btnConvertir"), Qt::LeftButton);
      EXPECT_FALSE(visible) << "hidden before the run shows its summary";

      // The same run made directly with the codes that the texts stand for.
      ReglagesExecution reference;
      reference.affichage = &banc.affichage;
      reference.DefinirSource(banc.Chemin("s.ptv"));
      reference.FichierCible.Nom = banc.Chemin("r.ptp");
      ASSERT_TRUE(ConvertirPtValEnPtPrecFiab(reference, static_cast<int16_t>(echelle + 1), theme + 2));
      EXPECT_EQ(LireFichier(banc.Chemin("c.ptp")), LireFichier(banc.Chemin("r.ptp"))) << echelle << theme;
      cibles.insert(LireFichier(banc.Chemin("c.ptp")).value_or(""));
    }
  }
  EXPECT_EQ(cibles.size(), 12u);  // every choice made a difference
}

TEST(DialoguesOptions, ChoixGardesJusquALaFermetureParLaBarreDeTitre) {
  const struct {
    QString echelle, theme;
    int16_t classe;
    int32_t groupe;
  } kInitial{"250", "CS", 1, 2}, kChoisi{"5000", "OD", 6, 3};
  Banc banc;
  banc.Ouvrir("s.ptv", 1);
  frmConvertirPtValEnPtPrecFiab* dialogue = MontrerValPrecFiab(banc);
  const auto verifier = [&](const auto& attendu) {
    EXPECT_EQ(Liste(dialogue, "lstEchelle")->currentText(), attendu.echelle);
    EXPECT_EQ(Liste(dialogue, "lstTheme")->currentText(), attendu.theme);
    EXPECT_EQ(dialogue->ClasseEchelle(), attendu.classe);
    EXPECT_EQ(dialogue->GroupeTheme(), attendu.groupe);
  };
  verifier(kInitial);
  EXPECT_FALSE(dialogue->isModal());
  Liste(dialogue, "lstEchelle")->setCurrentText(kChoisi.echelle);
  Liste(dialogue, "lstTheme")->setCurrentText(kChoisi.theme);
  Bouton(dialogue, "btnAbandonner")->click();
  EXPECT_FALSE(dialogue->isVisible());
  EXPECT_EQ(MontrerValPrecFiab(banc), dialogue);
  verifier(kChoisi);
  dialogue->close();  // as from the title bar
  EXPECT_FALSE(dialogue->isVisible());
  EXPECT_EQ(MontrerValPrecFiab(banc), dialogue);
  verifier(kInitial);
  EXPECT_TRUE(banc.boites.boites.empty() && !LireFichier(banc.Chemin("c.ptp")));  // nothing converted
}

TEST(DialoguesOptions, NiEchapNiEntreeHorsDesBoutons) {
  Banc banc;
  banc.Ouvrir("s.ptv", 1);
  QWidget* valPrec = MontrerValPrecFiab(banc);
  banc.Ouvrir("s.pts", 3);
  banc.EnregistrerSous("c.ptv", 1);
  for (QWidget* dialogue : {valPrec, static_cast<QWidget*>(banc.fenetre->DialogueDCVal())}) {
    EXPECT_EQ(dialogue->focusWidget(), Bouton(dialogue, "btnConvertir"));
    EXPECT_FALSE(Bouton(dialogue, "btnConvertir")->isDefault());
    for (QWidget* controle : {static_cast<QWidget*>(Bouton(dialogue, "btnConvertir")),
                              static_cast<QWidget*>(Liste(dialogue, "lstTheme"))}) {
      QTest::keyClick(controle, Qt::Key_Escape);
      EXPECT_TRUE(dialogue->isVisible());
    }
    Liste(dialogue, "lstTheme")->setFocus();
    QTest::keyClick(Liste(dialogue, "lstTheme"), Qt::Key_Return);
    EXPECT_TRUE(dialogue->isVisible() && banc.boites.boites.empty());
  }
}

}  // namespace
}  // namespace quillon::test
