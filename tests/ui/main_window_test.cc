// The main window: its menus, the open and save dialogs, and the
// conversions they lead to.
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

TEST(FenetrePrincipale, LeFiltreChoisiDonneLaSortePasLExtension) {
  const struct {
    int index;
    const char* nom;
    TypeFichier sorte;
    std::string filtreCible;
  } kCas[] = {
      {1, "s.ptp", TypeFichier::Valeur, "Points avec précision (*.ptp)|*.ptp"},
      {2, "s.ptv", TypeFichier::PrecFiab, "Points avec valeur (*.ptv)|*.ptv|Points au format MD01 (*.ptm)|*.ptm"},
      {3, "s.ptv", TypeFichier::DC, "Points avec valeur (*.ptv)|*.ptv"},
  };
  for (const auto& cas : kCas) {
    Banc banc;
    banc.reglages.journal.NbErreursLecture = 4;
    banc.Ouvrir(cas.nom, cas.index);
    EXPECT_EQ(banc.reglages.TypeFichierSource, cas.sorte) << cas.index;
    EXPECT_EQ(banc.reglages.journal.FichierLog.Nom, banc.Chemin(cas.nom) + ".log");
    EXPECT_EQ(banc.reglages.journal.NbErreursLecture, 0);
    banc.fenetre->mnuEnregistrerSous_Click();  // cancelled: nothing changes, nothing shows
    EXPECT_EQ(banc.dialogues.filtres, std::vector<std::string>({"Points avec valeur (*.ptv)|*.ptv|Points avec précisions "
                                                   "(*.ptp)|*.ptp|Points au format DC (*.pts)|*.pts",
                                                   cas.filtreCible}));
    EXPECT_EQ(banc.reglages.FichierCible.Nom, "");
    EXPECT_TRUE(banc.fenetre->DialogueValPrecFiab() == nullptr && banc.fenetre->DialogueDCVal() == nullptr);
  }
}

TEST(FenetrePrincipale, SourcePrecisionLeFiltreCibleChoisitLaConversion) {
  const struct {
    int index;
    const char* cible;
    std::string journal;  // first line of the log; empty: nothing runs
  } kCas[] = {{1, "c.ptm", "Traduction de fichier de point de Prec/Fiab en Valeur\r\n"},
              {2, "c.ptv", "Traduction de fichier de point de Prec/Fiab en MD01\r\n"},
              {3, "c.ptv", ""}};
  for (const auto& cas : kCas) {
    Banc banc;
    EcrireFichier(banc.Chemin("s.ptp"), "");
    banc.Ouvrir("s.ptp", 2);
    banc.EnregistrerSous(cas.cible, cas.index);
    EXPECT_EQ(LireFichier(banc.Chemin("s.ptp.log")).value_or("").substr(0, cas.journal.size()), cas.journal);
    EXPECT_EQ(LireFichier(banc.Chemin(cas.cible)).has_value(), !cas.journal.empty()) << cas.index;
    if (cas.journal.empty()) continue;
    ASSERT_EQ(banc.boites.boites.size(), 1u);
    EXPECT_EQ(banc.boites.boites[0].titre, "Quillon");
    EXPECT_EQ(banc.boites.boites[0].texte, TexteBilan(0, 0, 0, 0));
    EXPECT_EQ(banc.fin.appels, 0);
  }
}

TEST(FenetrePrincipale, ErreurFataleMontreeUneFoisPuisFinDuProgramme) {
  const struct {
    bool sourcePresente;
    const char* cible;
    const char* nomme;  // the file the message names
    const char* suite;
  } kCas[] = {{false, "c.ptv", "s.ptp", " ne peut pas être ouvert, l'application va s'arrêter"},
              {true, "pas/ici.ptv", "pas/ici.ptv", " ne peut pas être créé, l'application va s'arrêter"}};
  for (const auto& cas : kCas) {
    Banc banc;
    if (cas.sourcePresente) EcrireFichier(banc.Chemin("s.ptp"), "");
    banc.Ouvrir("s.ptp", 2);
    banc.EnregistrerSous(cas.cible, 1);
    const std::string attendu = "Le fichier " + banc.Chemin(cas.nomme) + cas.suite;
    ASSERT_EQ(banc.boites.boites.size(), 1u);
    EXPECT_TRUE(banc.boites.boites[0].fatale);
    EXPECT_EQ(banc.boites.boites[0].texte, attendu);
    EXPECT_EQ(banc.fin.appels, 1);
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
