// What each front end's windows do with a user's clicks and keys, the same
// scenarios for Qt and for Win32 (window_fakes.h): that their controls reach
// the window logic, that they show what it asks, and one whole run. What the
// logic decides is tested on the logic (window_logic_test.cc).
#include <gtest/gtest.h>

#include <filesystem>

#include "test_support.h"
#include "window_fakes.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

// The states themselves are the logic's: the entries follow them. Quitter
// and the title bar end the program, whatever dialog is left open.
TEST(Fenetres, MenusSuiventLaLogiqueEtQuitterTermine) {
  const auto p = NouveauPilote();
  EXPECT_EQ(p->Texte("frmQuillon"), kTitreQuillon);
  p->Commander(Commande::Ouvrir, "s.ptv", 1);
  EXPECT_TRUE(p->Actif(Commande::Fermer) && p->Actif(Commande::EnregistrerSous));
  p->Menu(Commande::Fermer);
  for (Commande c : {Commande::Fermer, Commande::EnregistrerSous, Commande::MettreEnPage, Commande::Imprimer}) {
    EXPECT_FALSE(p->Actif(c)) << static_cast<int>(c);
  }
  EXPECT_TRUE(p->Actif(Commande::Ouvrir) && p->Actif(Commande::Comparer) && p->Actif(Commande::Quitter) &&
              p->Actif(Commande::APropos));
  p->Menu(Commande::EnregistrerSous);
  EXPECT_EQ(p->dialogues.filtres.size(), 1u);
  p->Menu(Commande::Comparer);
  EXPECT_EQ(p->dialogues.titres.back(), "Comparer : l'ancien fichier");
  p->Menu(Commande::APropos);
  p->FermerParLaBarre("frmQuillon");
  EXPECT_EQ(p->fin.appels, 1);
  p->Menu(Commande::Quitter);
  EXPECT_EQ(p->fin.appels, 2);
}

// Each entry of each list reaches the logic; the buttons only hide the
// dialog, which keeps its choices; the title bar unloads it; no key closes it.
// ? > Langue: the entry chosen is checked and kept; the box says, in the
// language chosen, that it applies at the next start; the windows stay in
// French until then.
TEST(Fenetres, MenuLangue) {
  const auto p = NouveauPilote();
  EXPECT_TRUE(p->Coche(Commande::LangueSysteme));
  p->Menu(Commande::LangueAllemand);
  EXPECT_TRUE(p->Coche(Commande::LangueAllemand) && !p->Coche(Commande::LangueSysteme));
  EXPECT_EQ(p->preferences.Lire("langue"), "de");
  ASSERT_FALSE(p->boites.boites.empty());
  EXPECT_EQ(p->boites.boites.back().texte, "Die gewählte Sprache gilt ab dem nächsten Start von Quillon.");
  p->Menu(Commande::LangueFrancais);
  EXPECT_EQ(p->preferences.Lire("langue"), "fr");
  EXPECT_EQ(p->boites.boites.size(), 1u) << "French is the language shown";
  EXPECT_EQ(LangueAuDemarrage(p->preferences), Langue::Francais);
  EXPECT_EQ(p->Texte("frmQuillon"), kTitreQuillon);
}

TEST(Fenetres, DialoguesOptions) {
  for (const Formulaire* forme : {&FormulaireValPrecFiab(), &FormulaireDCVal()}) {
    const std::string f(forme->nom);
    SCOPED_TRACE(f);
    const auto p = NouveauPilote();
    const bool valeur = forme == &FormulaireValPrecFiab();
    LogiqueOptions& logique = valeur ? p->Logique().DialogueValPrecFiab() : p->Logique().DialogueDCVal();
    p->Commander(Commande::Ouvrir, "s", valeur ? 1 : 3);
    p->Commander(Commande::EnregistrerSous, "c", 1);
    ASSERT_TRUE(p->Visible(f));
    EXPECT_EQ(p->Texte(f), forme->titre);
    EXPECT_TRUE(p->AFocus(f, "btnConvertir"));
    p->Frapper(f, "btnConvertir", Touche::Echap);
    p->Frapper(f, "lstTheme", Touche::Echap);
    p->Frapper(f, "lstTheme", Touche::Entree);
    EXPECT_TRUE(p->Visible(f));

    const auto choix = [&] { return std::pair<int, int>(logique.ClasseEchelle(), logique.GroupeTheme()); };
    EXPECT_EQ(choix(), std::pair(1, 2));
    for (int i : {1, 2, 3, 4, 5, 0, 5}) {  // the scale classes; none in the DC dialog
      if (!valeur) break;
      p->Choisir(f, "lstEchelle", i);
      EXPECT_EQ(choix(), std::pair(i + 1, 2)) << i;
    }
    for (int i : {1, 0, 1}) {  // the theme groups
      p->Choisir(f, "lstTheme", i);
      EXPECT_EQ(choix(), std::pair(valeur ? 6 : 1, i + 2)) << i;
    }
    p->Cliquer(f, "btnAbandonner");
    EXPECT_FALSE(p->Visible(f));
    p->Commander(Commande::EnregistrerSous, "c", 1);
    EXPECT_TRUE(p->Visible(f) && p->Selection(f, "lstTheme") == 1) << "kept while hidden";
    EXPECT_EQ(choix(), std::pair(valeur ? 6 : 1, 3));
    p->FermerParLaBarre(f);
    EXPECT_FALSE(p->Visible(f) || logique.Charge());
    p->Commander(Commande::EnregistrerSous, "c", 1);
    EXPECT_TRUE(p->Selection(f, "lstTheme") == 0 && choix() == std::pair(1, 2)) << "loaded anew";
    EXPECT_TRUE(p->boites.boites.empty() && !fs::exists("c"));  // nothing converted
  }
}

// Ouvrir with the DC filter, Enregistrer sous, OD in the dialog, Convertir:
// target and log compared with those kept as data.
TEST(Fenetres, ConversionDCParLeDialogue) {
  const auto p = NouveauPilote();
  const std::string f(FormulaireDCVal().nom);
  fs::copy_file(fs::path(QUILLON_SAMPLES_DIR) / "lot12.pts", "lot12.pts");
  p->Commander(Commande::Ouvrir, "lot12.pts", 3);
  p->Commander(Commande::EnregistrerSous, "lot12.ptv", 1);
  p->Choisir(f, "lstTheme", 1);
  bool visible = true;
  p->boites.pendantLaBoite = [&] { visible = p->Visible(f); };
  p->Cliquer(f, "btnConvertir");
  EXPECT_FALSE(visible) << "hidden before the summary shows";
  ASSERT_EQ(p->boites.boites.size(), 1u);
  EXPECT_EQ(p->boites.boites[0].titre, "Quillon");
  const fs::path attendus = fs::path(QUILLON_WINDOWS_DIR) / "fenetres";
  EXPECT_EQ(LireFichier("lot12.ptv"), LireFichier(attendus / "attendu.ptv"));
  EXPECT_EQ(MasquerDate(LireFichier("lot12.pts.log")), LireFichier(attendus / "attendu.log"));
  EXPECT_EQ(p->fin.appels, 0);
}

// Where the tool is looked for is the logic's; here, that the button asks
// it and the box stays, and that Enter and Escape close the box.
TEST(Fenetres, AProposSystemInfoPuisEntreeOuEchap) {
  for (const Touche touche : {Touche::Entree, Touche::Echap}) {
    const auto p = NouveauPilote();
    const bool present = touche == Touche::Entree;
    p->registre.valeurs[{"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH"}] = "C:\\O\\msinfo32.exe";
    if (present) p->programmes.fichiers = {"C:\\O\\msinfo32.exe"};
    p->Menu(Commande::APropos);
    EXPECT_EQ(p->Texte("frmAPropos"), "A propos de Quillon");
    EXPECT_EQ(p->Texte("frmAPropos", "lblVersion"), TexteAPropos("lblVersion"));
    EXPECT_TRUE(p->AFocus("frmAPropos", "cmdOK"));
    p->Cliquer("frmAPropos", "cmdSysInfo");
    EXPECT_EQ(p->programmes.demarres.size(), present ? 1u : 0u);
    EXPECT_EQ(p->boites.boites.size(), present ? 0u : 1u);
    EXPECT_TRUE(p->Visible("frmAPropos"));
    p->Frapper("frmAPropos", "cmdOK", touche);
    EXPECT_FALSE(p->Visible("frmAPropos"));
    p->Menu(Commande::APropos);
    EXPECT_TRUE(p->Visible("frmAPropos"));
  }
}

}  // namespace
}  // namespace quillon::test
