// The about box: how it closes, and where it looks for the System
// Information tool.
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "banc.h"
#include "ui/qt/about_box.h"

namespace quillon::test {
namespace {

const std::string kCleMsinfo = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";

frmAPropos* Montrer(Banc& banc) {
  banc.fenetre->mnuAPropos_Click();
  return banc.fenetre->BoiteAPropos();
}

TEST(APropos, EntreeEtEchapFermentLaBoiteQuiSeRechargeEnsuite) {
  for (const Qt::Key touche : {Qt::Key_Return, Qt::Key_Escape}) {
    Banc banc;
    frmAPropos* boite = Montrer(banc);
    boite->setWindowTitle(QString());  // undone by the next loading
    QTest::keyClick(boite->findChild<QPushButton*>(QStringLiteral("cmdOK")), touche);
    EXPECT_FALSE(boite->isVisible() || boite->Charge()) << touche;
    EXPECT_EQ(Montrer(banc), boite);
    EXPECT_TRUE(boite->isVisible());
    EXPECT_EQ(boite->windowTitle(), QStringLiteral("A propos de Quillon"));
  }
}

// Where the tool is looked for is the window logic's (its own tests); here,
// that the button asks it and the box stays.
TEST(APropos, SystemInfoDemarreLOutilOuLeDitIndisponible) {
  for (const bool present : {true, false}) {
    Banc banc;
    banc.registre.valeurs[{kCleMsinfo, "PATH"}] = "C:\\O\\msinfo32.exe";
    if (present) banc.programmes.fichiers = {"C:\\O\\msinfo32.exe"};
    frmAPropos* boite = Montrer(banc);
    boite->findChild<QPushButton*>(QStringLiteral("cmdSysInfo"))->click();
    EXPECT_EQ(banc.programmes.demarres.size(), present ? 1u : 0u);
    EXPECT_EQ(banc.boites.boites.size(), present ? 0u : 1u);
    EXPECT_TRUE(boite->isVisible());
  }
}

TEST(APropos, RegistreAbsentEtTexteDUneValeur) {
#ifndef _WIN32
  std::string valeur = "ancienne";
  EXPECT_FALSE(RegistreSysteme().GetKeyValue(kHkeyLocalMachine, kCleMsinfo, "PATH", valeur));
  EXPECT_EQ(valeur, "");
#endif
  const std::pair<std::string, std::string> kCas[] = {
      {std::string("C:\\A\0", 5), "C:\\A"}, {"C:\\A", "C:\\A"}, {std::string("a\0\0", 3), std::string("a\0", 2)}};
  for (const auto& [tampon, texte] : kCas) EXPECT_EQ(TexteValeurRegistre(tampon.data(), tampon.size()), texte);
}

}  // namespace
}  // namespace quillon::test
