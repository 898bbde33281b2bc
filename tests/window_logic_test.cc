// What the windows decide, without any toolkit: a fake view over the window
// logic, fake platform services, and files held in memory.
#include <gtest/gtest.h>

#include "conversion/conversions.h"
#include "io/encoding.h"
#include "test_support.h"
#include "ui/window_logic.h"
#include "window_fakes.h"

namespace quillon::test {
namespace {

// Records what the logic asks of its view; loads a dialog as a view does,
// its lists reporting their first entries.
struct FausseVue : VueQuillon {
  bool menusActifs = false;
  std::vector<Dialogue> dialogues;
  int aPropos = 0;
  Parent Fenetre() override { return this; }
  void ActiverMenusFichier(bool actifs) override { menusActifs = actifs; }
  void MontrerDialogue(LogiqueOptions& dialogue) override {
    if (!dialogue.Charge()) {
      dialogue.Form_Load();
      dialogue.lstEchelle_Click("250");
      dialogue.lstTheme_Click("CS");
    }
    dialogues.push_back(dialogue.Genre());
  }
  void MontrerAPropos() override { ++aPropos; }
};

// A value line of theme 2 and one of a blank theme with nature 5, value code
// 62: the precision written depends on the scale, the second line's theme
// on the theme group.
std::string LignesValeur() {
  const auto ligne = [](const char* theme, const char* nature) {
    return std::string(theme) + "   5  12        1001" + nature + " R 62.   538000.500  152000.250 " +
           std::string(16, ' ') + "BORNE          \r\n";
  };
  return ligne("02", " 1") + ligne("  ", " 5");
}

struct Fenetre : FauxServices {
  SystemeFichiersMemoire fichiers;
  AffichageFenetre affichage{boites};
  ReglagesExecution reglages;
  FausseVue vue;
  LogiqueQuillon logique{reglages, services, vue};

  Fenetre() {
    reglages.affichage = &affichage;
    reglages.systeme = &fichiers;
  }
  void Ouvrir(const std::string& nom, int index) {
    dialogues.reponses.push_back({nom, index});
    logique.Commander(Commande::Ouvrir);
  }
  void EnregistrerSous(const std::string& nom, int index) {
    dialogues.reponses.push_back({nom, index});
    logique.Commander(Commande::EnregistrerSous);
  }
  std::string Cible(const std::string& nom) { return fichiers.fichiers.count(nom) ? fichiers.fichiers[nom] : ""; }
};

TEST(LogiqueFenetre, EtatDesMenus) {
  enum Geste { Annuler, Ouvrir, Fermer, EnregistrerAnnule };
  const struct {
    Geste geste;
    bool actifs;  // Fermer and Enregistrer sous...
    const char* source;
  } kEtapes[] = {{Annuler, false, ""},           {EnregistrerAnnule, false, ""}, {Ouvrir, true, "a.ptv"},
                 {Annuler, true, "a.ptv"},       {EnregistrerAnnule, true, "a.ptv"}, {Fermer, false, "a.ptv"},
                 {Fermer, false, "a.ptv"},       {Ouvrir, true, "a.ptv"}};
  Fenetre f;
  std::size_t dialoguesAttendus = 0;
  for (const auto& etape : kEtapes) {
    if (etape.geste == Annuler) f.logique.Commander(Commande::Ouvrir);
    if (etape.geste == Ouvrir) f.Ouvrir("a.ptv", 1);
    if (etape.geste == Fermer) f.logique.Commander(Commande::Fermer);
    if (etape.geste == EnregistrerAnnule) {
      f.logique.Commander(Commande::EnregistrerSous);
      // A disabled entry shows no dialog.
      if (f.logique.MenusFichierActifs()) ++dialoguesAttendus;
    }
    if (etape.geste == Annuler || etape.geste == Ouvrir) ++dialoguesAttendus;
    EXPECT_EQ(f.logique.MenusFichierActifs(), etape.actifs) << etape.geste;
    EXPECT_EQ(f.vue.menusActifs, etape.actifs) << etape.geste;
    EXPECT_EQ(f.reglages.FichierSource.Nom, etape.source);
    EXPECT_EQ(f.dialogues.filtres.size(), dialoguesAttendus);
  }
  // Mise en page and Imprimer do nothing.
  f.logique.Commander(Commande::MettreEnPage);
  f.logique.Commander(Commande::Imprimer);
  EXPECT_EQ(f.dialogues.filtres.size(), dialoguesAttendus);
  EXPECT_EQ(f.fin.appels, 0);
}

TEST(LogiqueFenetre, LeFiltreDOuvertureDonneLaSorte) {
  const struct {
    int index;
    LogiqueQuillon::TypeFichier sorte;
    const char* filtreCible;
  } kCas[] = {
      {1, LogiqueQuillon::TypeFichier::Valeur, "Points avec précision (*.ptp)|*.ptp"},
      {2, LogiqueQuillon::TypeFichier::PrecFiab, "Points avec valeur (*.ptv)|*.ptv|Points au format MD01 (*.ptm)|*.ptm"},
      {3, LogiqueQuillon::TypeFichier::DC, "Points avec valeur (*.ptv)|*.ptv"},
  };
  for (const auto& cas : kCas) {
    Fenetre f;
    f.reglages.journal.NbErreursLecture = 4;
    f.reglages.journal.NbErreursEcriture = 5;
    f.Ouvrir("s.ptv", cas.index);  // the extension says nothing
    EXPECT_EQ(f.logique.TypeFichierSource(), cas.sorte);
    EXPECT_EQ(f.reglages.journal.FichierLog.Nom, "s.ptv.log");
    EXPECT_EQ(f.reglages.journal.NbErreursLecture + f.reglages.journal.NbErreursEcriture, 0);
    f.logique.Commander(Commande::EnregistrerSous);  // cancelled: nothing changes
    EXPECT_EQ(f.dialogues.titres,
              (std::vector<std::string>{"Ouvrir un fichier points", "Enregistrer le fichier de points sous"}));
    EXPECT_EQ(f.dialogues.filtres.at(0),
              "Points avec valeur (*.ptv)|*.ptv|Points avec précisions (*.ptp)|*.ptp|Points au format DC "
              "(*.pts)|*.pts");
    EXPECT_EQ(f.dialogues.filtres.at(1), cas.filtreCible);
    EXPECT_EQ(f.reglages.FichierCible.Nom, "");
    EXPECT_TRUE(f.vue.dialogues.empty());
  }
}

TEST(LogiqueFenetre, SourcePrecisionLeFiltreCibleChoisitLaConversion) {
  const struct {
    int index;
    const char* premiereLigne;  // of the log; empty: nothing runs
  } kCas[] = {{1, "Traduction de fichier de point de Prec/Fiab en Valeur"},
              {2, "Traduction de fichier de point de Prec/Fiab en MD01"},
              {3, ""}};
  for (const auto& cas : kCas) {
    Fenetre f;
    f.fichiers.fichiers["s.ptp"] = "";
    f.Ouvrir("s.ptp", 2);
    f.EnregistrerSous("c.ptv", cas.index);
    const std::vector<std::string> journal = LignesCRLF(f.Cible("s.ptp.log"));
    EXPECT_EQ(journal.empty() ? "" : journal[0], cas.premiereLigne);
    EXPECT_EQ(f.fichiers.fichiers.count("c.ptv"), *cas.premiereLigne ? 1u : 0u);
    EXPECT_EQ(f.boites.boites.size(), *cas.premiereLigne ? 1u : 0u);
    EXPECT_EQ(f.fin.appels, 0);
  }
}

TEST(LogiqueFenetre, ErreurFataleUneBoitePuisLaFin) {
  for (const bool parDialogue : {false, true}) {
    Fenetre f;
    f.Ouvrir("absente", parDialogue ? 3 : 2);
    f.EnregistrerSous("c.ptv", 1);
    if (parDialogue) f.logique.DialogueDCVal().btnConvertir_Click();
    ASSERT_EQ(f.boites.boites.size(), 1u);
    EXPECT_TRUE(f.boites.boites[0].fatale);
    // The Windows-1252 message of the run, in UTF-8 for the box.
    EXPECT_EQ(f.boites.boites[0].texte, "Le fichier absente ne peut pas être ouvert, l'application va s'arrêter");
    EXPECT_EQ(f.fin.appels, 1);
  }
}

TEST(LogiqueFenetre, DialogueMontreSansConvertirPuisConvertitAvecLesChemins) {
  Fenetre f;
  f.fichiers.fichiers["s.ptv"] = LignesValeur();
  f.Ouvrir("s.ptv", 1);
  f.EnregistrerSous("premiere.ptp", 1);
  f.EnregistrerSous("c.ptp", 1);  // the paths current at the click count
  EXPECT_EQ(f.vue.dialogues, (std::vector<Dialogue>{Dialogue::ValPrecFiab, Dialogue::ValPrecFiab}));
  EXPECT_TRUE(f.fichiers.fichiers.count("c.ptp") == 0 && f.boites.boites.empty());

  LogiqueOptions& dialogue = f.logique.DialogueValPrecFiab();
  dialogue.lstEchelle_Click("5000");
  dialogue.lstTheme_Click("OD");
  dialogue.btnConvertir_Click();
  ASSERT_EQ(f.boites.boites.size(), 1u);
  EXPECT_EQ(f.boites.boites[0].titre, "Quillon");
  EXPECT_EQ(f.boites.boites[0].texte, TexteBilan(2, 0, 0, 0));

  // The same run made directly with the codes that the texts stand for.
  ReglagesExecution reference;
  reference.affichage = &f.affichage;
  reference.systeme = &f.fichiers;
  reference.DefinirSource("s.ptv");
  reference.FichierCible.Nom = "r.ptp";
  ASSERT_TRUE(ConvertirPtValEnPtPrecFiab(reference, 6, 3));
  EXPECT_EQ(f.Cible("c.ptp"), f.Cible("r.ptp"));
  EXPECT_EQ(f.fichiers.fichiers.count("premiere.ptp"), 0u);
}

TEST(LogiqueFenetre, ChoixDesDialogues) {
  enum Geste { Montrer, Echelle, Theme, FermerParLaBarre };
  const struct {
    Geste geste;
    const char* texte;
    int16_t classe;
    int32_t groupe;
  } kEtapes[] = {
      {Montrer, "", 1, 2},       {Echelle, "5000", 6, 2},     {Theme, "OD", 6, 3},
      {Echelle, "0500", 6, 3},   {Theme, "XX", 6, 3},         {Montrer, "", 6, 3},  // kept
      {FermerParLaBarre, "", 6, 3}, {Montrer, "", 1, 2},     {Echelle, "1000", 3, 2},
  };
  for (const Dialogue genre : {Dialogue::ValPrecFiab, Dialogue::DCVal}) {
    Fenetre f;
    f.Ouvrir("s", genre == Dialogue::ValPrecFiab ? 1 : 3);
    LogiqueOptions& dialogue =
        genre == Dialogue::ValPrecFiab ? f.logique.DialogueValPrecFiab() : f.logique.DialogueDCVal();
    EXPECT_FALSE(dialogue.Charge());
    for (const auto& etape : kEtapes) {
      if (etape.geste == Montrer) f.EnregistrerSous("c", 1);
      if (etape.geste == Echelle) dialogue.lstEchelle_Click(etape.texte);
      if (etape.geste == Theme) dialogue.lstTheme_Click(etape.texte);
      if (etape.geste == FermerParLaBarre) dialogue.Form_Unload();
      EXPECT_EQ(dialogue.Charge(), etape.geste != FermerParLaBarre);
      EXPECT_EQ(dialogue.ClasseEchelle(), etape.classe) << etape.texte;
      EXPECT_EQ(dialogue.GroupeTheme(), etape.groupe) << etape.texte;
    }
    EXPECT_TRUE(f.boites.boites.empty());  // nothing converted
  }
}

TEST(LogiqueFenetre, QuitterEtFermerLaFenetreTerminent) {
  for (const bool parQuitter : {true, false}) {
    Fenetre f;
    f.logique.Commander(Commande::APropos);
    EXPECT_EQ(f.vue.aPropos, 1);
    if (parQuitter) f.logique.Commander(Commande::Quitter);
    if (!parQuitter) f.logique.Form_Unload();
    EXPECT_EQ(f.fin.appels, 1);
  }
}

TEST(LogiqueFenetre, OuTrouverLOutilInformationsSysteme) {
  const std::pair<std::string, std::string> kPath{"SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH"};
  const std::pair<std::string, std::string> kMsinfo{"SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO"};
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
    FauxServices s;
    s.registre.valeurs = cas.registre;
    s.programmes.fichiers = cas.fichiers;
    StartSysInfo(s.registre, s.programmes, s.boites, nullptr);
    EXPECT_EQ(s.programmes.demarres, cas.demarres);
    ASSERT_EQ(s.boites.boites.size(), cas.demarres.empty() ? 1u : 0u);
    if (cas.demarres.empty()) {
      EXPECT_EQ(s.boites.boites[0].titre, "Quillon");
      EXPECT_EQ(s.boites.boites[0].texte, "System Information Is Unavailable At This Time");
    }
  }
}

}  // namespace
}  // namespace quillon::test
