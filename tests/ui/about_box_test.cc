// The about box: how it closes, and where it looks for the System
// Information tool.
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "banc.h"
#include "ui/about_box.h"

namespace quillon::test {
namespace {

const std::string kCleMsinfo = "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO";
const std::string kCleEmplacements = "SOFTWARE\\Microsoft\\Shared Tools Location";

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

TEST(APropos, OuTrouverLOutilInformationsSysteme) {
  const std::pair<std::string, std::string> kPath{kCleMsinfo, "PATH"}, kMsinfo{kCleEmplacements, "MSINFO"};
  const struct {
    std::map<std::pair<std::string, std::string>, std::string> registre;
    std::set<std::string> fichiers;
    std::vector<std::string> demarres;  // none: the message instead
  } kCas[] = {
      {{{kPath, "C:\\O\\msinfo32.exe"}}, {"C:\\O\\msinfo32.exe"}, {"C:\\O\\msinfo32.exe"}},
      // PATH read but nothing there: no second chance with MSINFO.
      {{{kPath, "C:\\X\\msinfo32.exe"}, {kMsinfo, "C:\\M"}}, {"C:\\M\\MSINFO32.EXE"}, {}},
      {{{kMsinfo, "C:\\M"}}, {"C:\\M\\MSINFO32.EXE"}, {"C:\\M\\MSINFO32.EXE"}},
      {{{kMsinfo, "C:\\M"}}, {}, {}},
      {{}, {}, {}},
  };
  for (const auto& cas : kCas) {
    Banc banc;
    banc.registre.valeurs = cas.registre;
    banc.programmes.fichiers = cas.fichiers;
    frmAPropos* boite = Montrer(banc);
    boite->findChild<QPushButton*>(QStringLiteral("cmdSysInfo"))->click();
    EXPECT_EQ(banc.programmes.demarres, cas.demarres);
    ASSERT_EQ(banc.boites.boites.size(), cas.demarres.empty() ? 1u : 0u);
    if (cas.demarres.empty()) {
      EXPECT_EQ(banc.boites.boites[0].titre, QStringLiteral("Quillon"));
      EXPECT_EQ(banc.boites.boites[0].texte, QStringLiteral("System Information Is Unavailable At This Time"));
    }
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
