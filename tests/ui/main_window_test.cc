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

TEST(FenetrePrincipale, MenusSelonOuvrirFermerEtAnnuler) {
  enum Geste { Annuler, Ouvrir, Fermer };
  const struct {
    Geste geste;
    bool actifs;  // Fermer and Enregistrer sous...
  } kEtapes[] = {{Annuler, false}, {Ouvrir, true}, {Annuler, true}, {Fermer, false}, {Ouvrir, true}};
  Banc banc;
  std::string source;  // neither a cancel nor Fermer changes it
  for (const auto& etape : kEtapes) {
    if (etape.geste == Annuler) banc.fenetre->mnuOuvrir_Click();
    if (etape.geste == Ouvrir) {
      banc.Ouvrir("s.ptv", 1);
      source = banc.Chemin("s.ptv");
    }
    if (etape.geste == Fermer) banc.fenetre->mnuFermer_Click();
    EXPECT_EQ(Actif(banc, "mnuFermer"), etape.actifs) << etape.geste;
    EXPECT_EQ(Actif(banc, "mnuEnregistrerSous"), etape.actifs) << etape.geste;
    EXPECT_FALSE(Actif(banc, "mnuMettreEnPage") || Actif(banc, "mnuImprimer"));
    EXPECT_EQ(banc.reglages.FichierSource.Nom, source);
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
