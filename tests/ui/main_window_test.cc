// The Qt main window as a view of the window logic: its menu entries follow
// the logic's states, and its ways out end the program. What the logic
// decides (filters, conversions, fatal errors) is tested on the logic itself
// (window_logic_test.cc); a whole run through these windows in
// end_to_end_test.cc.
#include <QAction>
#include <gtest/gtest.h>

#include "banc.h"
#include "ui/qt/seams_qt.h"

namespace quillon::test {
namespace {

bool Actif(const Banc& banc, const char* entree) {
  return banc.fenetre->findChild<QAction*>(QLatin1String(entree))->isEnabled();
}

// The states themselves are the logic's (window_logic_test.cc): the entries
// follow them.
TEST(FenetrePrincipale, MenusSuiventLaLogique) {
  Banc banc;
  banc.Ouvrir("s.ptv", 1);
  EXPECT_TRUE(Actif(banc, "mnuFermer") && Actif(banc, "mnuEnregistrerSous"));
  banc.fenetre->mnuFermer_Click();
  for (const char* entree : {"mnuFermer", "mnuEnregistrerSous", "mnuMettreEnPage", "mnuImprimer"}) {
    EXPECT_FALSE(Actif(banc, entree)) << entree;
  }
}

TEST(FenetrePrincipale, QuitterEtFermerLaFenetreTerminentLeProgramme) {
  for (const bool parQuitter : {true, false}) {
    Banc banc;
    banc.fenetre->mnuAPropos_Click();  // a dialog left open does not keep the program
    if (parQuitter) banc.fenetre->findChild<QAction*>(QStringLiteral("mnuQuitter"))->trigger();
    if (!parQuitter) banc.fenetre->close();
    EXPECT_EQ(banc.fin.appels, 1) << parQuitter;
  }
}

TEST(FenetrePrincipale, FiltresPourLesDialoguesDeQt) {
  EXPECT_EQ(FiltresQt("Points avec valeur (*.ptv)|*.ptv|Tous|*.*"), QStringList({"Points avec valeur (*.ptv)", "Tous (*.*)"}));
}

}  // namespace
}  // namespace quillon::test
