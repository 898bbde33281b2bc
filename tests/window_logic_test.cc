// What the windows decide, without any toolkit: a fake view over the window
// logic, fake platform services, and files held in memory. What each view
// does with it: window_views_test.cc.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>

#include "conversion/conversions.h"
#include "test_support.h"
#include "window_fakes.h"

namespace quillon::test {
namespace {

// Records what the logic asks of its view; loads a dialog as a view does,
// its lists reporting their first entries.
struct FausseVue : VueQuillon {
  bool menusActifs = false;
  std::vector<Dialogue> dialogues;
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
  void MontrerAPropos() override {}
  // The batch dialog: what it does before Contrôler, or Abandonner when null.
  std::function<bool(LogiqueDialogueLot&)> dialogueLot = [](LogiqueDialogueLot&) { return true; };
  int dialoguesLot = 0;
  unsigned rafraichies = 0;  // the parts shown again
  std::atomic<int> reveils{0};
  bool MontrerDialogueLot(LogiqueDialogueLot& dialogue) override {
    ++dialoguesLot;
    return dialogueLot && dialogueLot(dialogue);
  }
  void Rafraichir(unsigned parties) override { rafraichies |= parties; }
  void Reveiller() override { ++reveils; }
};

constexpr const char* kFiltrePrec = "Points avec valeur (*.ptv)|*.ptv|Points au format MD01 (*.ptm)|*.ptm";

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
  // The command, with a file picked in its dialog.
  void Commander(Commande commande, const std::string& nom, int index) {
    dialogues.reponses.push_back({nom, index});
    logique.Commander(commande);
  }
  std::string Cible(const std::string& nom) { return fichiers.fichiers.count(nom) ? fichiers.fichiers[nom] : ""; }
};

TEST(LogiqueFenetre, EtatDesMenus) {
  const struct {
    Commande commande;
    bool choisi;  // a file picked in the dialog, if one shows
    bool actifs;  // Fermer and Enregistrer sous...
    const char* source;
    std::size_t dialogues;  // shown so far: a disabled entry shows none
  } kEtapes[] = {{Commande::Ouvrir, false, false, "", 1},         {Commande::EnregistrerSous, true, false, "", 1},
                 {Commande::Ouvrir, true, true, "a.ptv", 2},      {Commande::Ouvrir, false, true, "a.ptv", 3},
                 {Commande::EnregistrerSous, false, true, "a.ptv", 4}, {Commande::Fermer, false, false, "a.ptv", 4},
                 {Commande::Fermer, false, false, "a.ptv", 4},    {Commande::MettreEnPage, false, false, "a.ptv", 4},
                 {Commande::Imprimer, false, false, "a.ptv", 4},  {Commande::Ouvrir, true, true, "a.ptv", 5}};
  Fenetre f;
  for (const auto& etape : kEtapes) {
    f.dialogues.reponses.clear();
    if (etape.choisi) f.dialogues.reponses.push_back({"a.ptv", 1});
    f.logique.Commander(etape.commande);
    EXPECT_EQ(f.logique.MenusFichierActifs(), etape.actifs) << static_cast<int>(etape.commande);
    EXPECT_EQ(f.vue.menusActifs, etape.actifs);
    EXPECT_EQ(f.reglages.FichierSource.Nom, etape.source);
    EXPECT_EQ(f.dialogues.filtres.size(), etape.dialogues);
  }
  EXPECT_TRUE(f.vue.dialogues.empty());
  EXPECT_EQ(f.fin.appels, 0);
}

// The open dialog's filter gives the kind of the source, whatever its
// extension, and so the save dialog's filter; a precision source is then
// converted at once, as the save dialog's filter says.
TEST(LogiqueFenetre, LesFiltresChoisissentLaConversion) {
  using T = LogiqueQuillon::TypeFichier;
  const struct {
    int ouvrir, enregistrer;  // filter indexes; 0: cancelled
    T sorte;
    const char* filtreCible;
    const char* premiereLigne;  // of the log; empty: nothing runs
    std::vector<Dialogue> dialogues;
  } kCas[] = {
      {1, 0, T::Valeur, "Points avec précision (*.ptp)|*.ptp", "", {}},
      {1, 1, T::Valeur, "Points avec précision (*.ptp)|*.ptp", "", {Dialogue::ValPrecFiab}},
      {2, 0, T::PrecFiab, kFiltrePrec, "", {}},
      {2, 1, T::PrecFiab, kFiltrePrec, "Traduction de fichier de point de Prec/Fiab en Valeur", {}},
      {2, 2, T::PrecFiab, kFiltrePrec, "Traduction de fichier de point de Prec/Fiab en MD01", {}},
      {2, 3, T::PrecFiab, kFiltrePrec, "", {}},
      {3, 1, T::DC, "Points avec valeur (*.ptv)|*.ptv", "", {Dialogue::DCVal}},
  };
  for (const auto& cas : kCas) {
    Fenetre f;
    f.fichiers.fichiers["s.ptv"] = "";
    f.reglages.journal.NbErreursLecture = 4;
    f.reglages.journal.NbErreursEcriture = 5;
    f.Commander(Commande::Ouvrir, "s.ptv", cas.ouvrir);
    EXPECT_EQ(f.logique.TypeFichierSource(), cas.sorte);
    EXPECT_EQ(f.reglages.journal.NbErreursLecture + f.reglages.journal.NbErreursEcriture, 0);
    if (cas.enregistrer != 0) f.dialogues.reponses.push_back({"c.ptv", cas.enregistrer});
    f.logique.Commander(Commande::EnregistrerSous);
    EXPECT_EQ(f.reglages.FichierCible.Nom, cas.enregistrer != 0 ? "c.ptv" : "");
    EXPECT_EQ(f.dialogues.titres,
              (std::vector<std::string>{"Ouvrir un fichier points", "Enregistrer le fichier de points sous"}));
    EXPECT_EQ(f.dialogues.filtres, (std::vector<std::string>{"Points avec valeur (*.ptv)|*.ptv|Points avec "
                                                             "précisions (*.ptp)|*.ptp|Points au format DC (*.pts)|*.pts",
                                                             cas.filtreCible}));
    const std::vector<std::string> journal = LignesCRLF(f.Cible("s.ptv.log"));
    EXPECT_EQ(journal.empty() ? "" : journal[0], cas.premiereLigne);
    EXPECT_EQ(f.fichiers.fichiers.count("c.ptv") + f.boites.boites.size(), *cas.premiereLigne ? 2u : 0u);
    EXPECT_EQ(f.vue.dialogues, cas.dialogues);
    EXPECT_EQ(f.fin.appels, 0);
    // OK pressed: no report.
    for (const auto& boite : f.boites.boites) {
      EXPECT_EQ(boite.boutons, (std::vector<std::string>{"Voir le rapport", "Exporter…"}));
    }
    EXPECT_TRUE(f.documents.ouverts.empty() && f.fichiers.fichiers.count("quillon-s.ptv.html") == 0);
  }
}

TEST(LogiqueFenetre, ErreurFataleUneBoitePuisLaFin) {
  for (const bool parDialogue : {false, true}) {
    Fenetre f;
    f.Commander(Commande::Ouvrir, "absente", parDialogue ? 3 : 2);
    f.Commander(Commande::EnregistrerSous, "c.ptv", 1);
    if (parDialogue) f.logique.DialogueDCVal().btnConvertir_Click();
    ASSERT_EQ(f.boites.boites.size(), 1u);
    EXPECT_TRUE(f.boites.boites[0].fatale);
    // The Windows-1252 message of the run, in UTF-8 for the box.
    EXPECT_EQ(f.boites.boites[0].texte, "Le fichier absente ne peut pas être ouvert, l'application va s'arrêter");
    EXPECT_EQ(f.fin.appels, 1);
  }
}

// A value line of theme 2 and one of a blank theme with nature 5, value code
// 62: the precision written depends on the scale, the second line's theme on
// the theme group. The dialog shows without converting; Convertir runs with
// the paths current at the click.
TEST(LogiqueFenetre, DialogueMontreSansConvertirPuisConvertitAvecLesChemins) {
  const auto ligne = [](const char* theme, const char* nature) {
    return std::string(theme) + "   5  12        1001" + nature + " R 62.   538000.500  152000.250 " +
           std::string(16, ' ') + "BORNE          \r\n";
  };
  Fenetre f;
  f.fichiers.fichiers["s.ptv"] = ligne("02", " 1") + ligne("  ", " 5");
  f.Commander(Commande::Ouvrir, "s.ptv", 1);
  f.Commander(Commande::EnregistrerSous, "premiere.ptp", 1);
  f.Commander(Commande::EnregistrerSous, "c.ptp", 1);
  EXPECT_EQ(f.vue.dialogues, (std::vector<Dialogue>{Dialogue::ValPrecFiab, Dialogue::ValPrecFiab}));
  EXPECT_TRUE(f.fichiers.fichiers.count("c.ptp") == 0 && f.boites.boites.empty());

  LogiqueOptions& dialogue = f.logique.DialogueValPrecFiab();
  dialogue.lstEchelle_Click("5000");
  dialogue.lstTheme_Click("OD");
  f.boites.choix = {1};
  dialogue.btnConvertir_Click();
  // "Voir le rapport" picked: the run's report, written and opened; the
  // summary comes back, and OK ends it.
  ASSERT_EQ(f.boites.boites.size(), 2u);
  EXPECT_EQ(f.boites.boites[0].titre, "Quillon");
  EXPECT_EQ(f.boites.boites[1].texte, f.boites.boites[0].texte);
  EXPECT_EQ(f.documents.ouverts, std::vector<std::string>{"quillon-s.ptv.html"});
  const std::string rapport = f.Cible("quillon-s.ptv.html");
  for (const char* texte : {"2 ligne(s) lues dans le fichier source", "ptv-ptp", "échelle 5000, thème OD"}) {
    EXPECT_NE(rapport.find(texte), std::string::npos) << texte;
  }
  EXPECT_EQ(f.boites.boites[0].texte,
            "2 ligne(s) lues dans le fichier source\r\n0 ligne(s) ignorée(s) lors de la conversion\r\n0 erreur(s) "
            "constatée(s) lors de la lecture du fichier source\r\n0 erreur(s) constatée(s) lors de l'écriture "
            "dans le fichier cible");

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

// "Exporter…" in the summary box: a save dialog with one filter per format,
// GeoPackage first; the name picked, its extension or not, gives the files;
// a name that is the run's own source, target or log writes nothing; a
// failed export says why, SQLite's words after Quillon's. The summary comes
// back after each export.
TEST(LogiqueFenetre, ExporterDepuisLeBilan) {
  const std::string kValide = "06 2361502           1 2OR 77.  2600000.000 1200000.000 2541.360        PFP3 n\xB0 12   AB\r\n";
  const struct {
    const char* source;
    const char* nom;
    int filtre;
    std::vector<std::string> ecrits;  // besides the run's source, target and log
    const char* message;
    const char* plein = nullptr;  // a file that fills the disk
  } kCas[] = {
      {"s.ptv", "export.csv", 2, {"export.csv", "export.csvt", "export-rejets.csv", "export-rejets.csvt"},
       "1 point(s) et 0 ligne(s) rejetée(s) exportés dans export.csv\r\nSystème de coordonnées : EPSG:2056"},
      {"s.ptv", "export", 4, {"export.dxf"},
       "1 point(s) et 0 ligne(s) rejetée(s) exportés dans export.dxf\r\nSystème de coordonnées : EPSG:2056"},
      {"s.ptv", "EXPORT.GeoJSON", 3, {"EXPORT.geojson", "EXPORT-rejets.geojson"}, nullptr},
      {"s.ptv", "c", 0, {}, nullptr},  // cancelled
      {"s.csv", "s", 2, {}, "Le fichier s.csv est la source, la cible ou le journal : rien n'est exporté"},
      {"s.ptv", "export", 1, {}, "Le fichier export.gpkg ne peut pas être écrit (disk I/O error)", "export.gpkg"},
  };
  for (const auto& cas : kCas) {
    SCOPED_TRACE(cas.nom);
    Fenetre f;
    const std::string source = cas.source;
    f.fichiers.fichiers[source] = kValide;
    if (cas.plein != nullptr) f.fichiers.pannes[cas.plein].octets = 4096;
    f.Commander(Commande::Ouvrir, source, 1);
    f.Commander(Commande::EnregistrerSous, "c.ptp", 1);
    f.boites.choix = {2};
    if (cas.filtre != 0) f.dialogues.reponses.push_back({cas.nom, cas.filtre});
    f.logique.DialogueValPrecFiab().lstEchelle_Click("1000");
    f.logique.DialogueValPrecFiab().btnConvertir_Click();
    EXPECT_EQ(f.dialogues.titres.back(), "Exporter les points");
    EXPECT_EQ(f.dialogues.filtres.back(),
              "GeoPackage (*.gpkg)|*.gpkg|CSV (*.csv)|*.csv|GeoJSON (*.geojson)|*.geojson|DXF (*.dxf)|*.dxf");
    std::vector<std::string> ecrits;
    for (const auto& [nom, octets] : f.fichiers.fichiers) {
      if (nom != source && nom != source + ".log" && nom != "c.ptp") ecrits.push_back(nom);
    }
    std::sort(ecrits.begin(), ecrits.end());
    std::vector<std::string> attendus = cas.ecrits;
    std::sort(attendus.begin(), attendus.end());
    EXPECT_EQ(ecrits, attendus);
    const bool message = !cas.ecrits.empty() || (cas.message != nullptr);
    ASSERT_EQ(f.boites.boites.size(), message ? 3u : 2u);  // the summary, the export's box, the summary again
    if (cas.message != nullptr) {
      EXPECT_EQ(f.boites.boites[1].texte, cas.message);
    }
  }
}

// "Comparer deux fichiers…": the old file, then the new one; their report
// written into the temporary folder and opened; a box for what cannot be
// compared.
TEST(LogiqueFenetre, ComparerDeuxFichiers) {
  const std::string kPoint = "06 2361502           1 2OR 77.  2600000.000 1200000.000 2541.360        PFP3 12      AB\r\n";
  const struct {
    std::vector<FichierChoisi> choisis;
    const char* rapport;  // written and opened, or null
    const char* message;
  } kCas[] = {
      {{{"a.ptv", 1}, {"b.ptv", 1}}, "quillon-a.ptv-b.ptv.html", nullptr},
      {{{"a.ptv", 1}}, nullptr, nullptr},  // the second dialog cancelled
      {{{"a.ptv", 1}, {"b.txt", 1}}, nullptr, "Le fichier b.txt n'est pas un fichier .ptv, .ptp ou .pts"},
      {{{"a.ptv", 1}, {"absent.ptp", 1}}, nullptr, "Le fichier absent.ptp ne peut pas être ouvert"},
  };
  for (const auto& cas : kCas) {
    Fenetre f;
    f.fichiers.fichiers["a.ptv"] = kPoint;
    f.fichiers.fichiers["b.ptv"] = kPoint + kPoint;
    f.dialogues.reponses.assign(cas.choisis.begin(), cas.choisis.end());
    f.logique.Commander(Commande::Comparer);
    EXPECT_EQ(f.dialogues.titres.front(), "Comparer : l'ancien fichier");
    EXPECT_EQ(f.documents.ouverts, cas.rapport ? std::vector<std::string>{cas.rapport} : std::vector<std::string>{});
    if (cas.rapport) {
      EXPECT_NE(f.Cible(cas.rapport).find("<!DOCTYPE html>"), std::string::npos);
    }
    ASSERT_EQ(f.boites.boites.size(), cas.message ? 1u : 0u);
    if (cas.message) {
      EXPECT_EQ(f.boites.boites[0].texte, cas.message);
    }
  }
}

// Which entry gives which choice, and how long a choice stays, go through
// each view (window_views_test.cc); here, the texts that no list holds.
TEST(LogiqueFenetre, TexteHorsDesListesSansEffet) {
  Fenetre f;
  LogiqueOptions& dialogue = f.logique.DialogueDCVal();
  dialogue.Form_Load();
  for (const char* texte : {"0500", "XX", "", "od", "cs"}) {
    dialogue.lstEchelle_Click(texte);
    dialogue.lstTheme_Click(texte);
  }
  EXPECT_TRUE(dialogue.ClasseEchelle() == 1 && dialogue.GroupeTheme() == 2);
}

TEST(LogiqueFenetre, OuTrouverLOutilInformationsSysteme) {
  const std::string kMessage = "System Information Is Unavailable At This Time";
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
    for (const auto& b : s.boites.boites) EXPECT_EQ(b.titre + ": " + b.texte, "Quillon: " + kMessage);
  }
  // A registry value's text: one NUL at its end dropped.
  const std::pair<std::string, std::string> kValeurs[] = {
      {std::string("C:\\A\0", 5), "C:\\A"}, {"C:\\A", "C:\\A"}, {std::string("a\0\0", 3), std::string("a\0", 2)}};
  for (const auto& [tampon, texte] : kValeurs) EXPECT_EQ(TexteValeurRegistre(tampon.data(), tampon.size()), texte);
}

}  // namespace
}  // namespace quillon::test
