// The main window's workbench through fakes: drops of files and folders of
// every kind, the batch dialog's choices, the run watched and stopped, the
// table's order, the file shown and what its picture and lists answer.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>
#include <thread>

#include "io/translation.h"
#include "test_support.h"
#include "ui/forms.h"
#include "ui/print_layout.h"
#include "ui/workbench.h"
#include "window_fakes.h"

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

struct VueTest : VueAtelier {
  std::function<bool(LogiqueDialogueLot&)> dialogue = [](LogiqueDialogueLot&) { return true; };
  int dialogues = 0;
  Parent Fenetre() override { return this; }
  bool MontrerDialogueLot(LogiqueDialogueLot& d) override {
    ++dialogues;
    return dialogue && dialogue(d);
  }
  void Rafraichir(unsigned) override {}
  void Reveiller() override {}
};

struct Banc : FauxServices {
  DossierCourant dossier;
  AffichageFenetre affichage{boites};
  ReglagesExecution reglages;
  VueTest vue;
  Atelier atelier{reglages, services, vue};
  Banc() {
    InitialiserTables(reglages);
    reglages.affichage = &affichage;
  }
  // Until the batch has ended and the file selected is read, or shown as
  // unreadable.
  void Attendre() {
    const auto fin = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (std::chrono::steady_clock::now() < fin) {
      atelier.TraiterEvenements();
      const bool lu = !atelier.RangChoisi() || atelier.Montre() != nullptr ||
                      (!atelier.MessageFichier().empty() && !atelier.MessageFichier().starts_with("Lecture"));
      if (!atelier.EtatAvancement().enCours && lu) return;
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    FAIL() << "the batch never ended";
  }
  std::vector<std::string> Rangees() {
    std::vector<std::string> r;
    for (std::size_t k = 0; k < atelier.Table().Taille(); ++k) {
      const LigneFichier& l = atelier.Table().Ligne(k);
      // The files found in a folder are named with the system's separator.
      std::string source = l.source;
      std::replace(source.begin(), source.end(), '\\', '/');
      r.push_back(source + " " + std::string(MotIssueFenetre(l.issue)) + (l.raison.empty() ? "" : ": " + l.raison));
    }
    return r;
  }
};

// Folders, files of every kind, a file dropped twice, a folder without
// point files and a name that is not there: each gets its row, the batch
// runs each point file once, problems come first, and the first file with
// problems is shown.
TEST(Atelier, DepotsDeToutesSortes) {
  Banc b;
  fs::create_directories("livraison/sous");
  fs::create_directory("vide");
  EcrireFichier("livraison/f10.ptv", Points(3));
  EcrireFichier("livraison/f2.ptv", Points(2) + kRejetee);
  EcrireFichier("livraison/sous/f1.ptv", Points(1));
  EcrireFichier("livraison/notes.txt", "rien");
  EcrireFichier("vide/lisezmoi.txt", "rien");
  EcrireFichier("notes.txt", "rien");
  b.atelier.Deposer({"livraison", "livraison/f2.ptv", "notes.txt", "vide", "absent.ptv"});
  b.Attendre();
  EXPECT_EQ(b.vue.dialogues, 1);
  EXPECT_EQ(b.Rangees(), (std::vector<std::string>{
                             "absent.ptv échec: Le fichier absent.ptv ne peut pas être ouvert",
                             "livraison/f2.ptv rejets",
                             "notes.txt non traité: n'est pas un fichier de points (.ptv, .ptp ou .pts)",
                             "vide non traité: aucun fichier de points (.ptv, .ptp ou .pts)",
                             "livraison/f10.ptv converti",
                             "livraison/sous/f1.ptv converti",
                         }));
  ASSERT_EQ(b.atelier.RangChoisi(), 1u);
  ASSERT_NE(b.atelier.Montre(), nullptr);
  EXPECT_EQ(b.atelier.Montre()->Rejets().size(), 1u);
  EXPECT_FALSE(fs::exists("livraison/f2.ptp"));  // check only, by default
  EXPECT_TRUE(fs::exists("livraison/f2.ptv.log"));
  EXPECT_EQ(b.atelier.Table().Cellule(1, 4), "1");  // its reading error
}

// The dialog's choices make the batch's options; Abandonner runs nothing;
// a folder is asked for where the targets go into one.
TEST(Atelier, DialogueDuLot) {
  Banc b;
  fs::create_directory("d");
  EcrireFichier("d/a.ptv", Points(2));
  EcrireFichier("d/b.ptp", "");
  b.vue.dialogue = nullptr;
  b.atelier.Deposer({"d"});
  b.Attendre();
  EXPECT_EQ(b.atelier.Table().Taille(), 0u);

  b.dialogues.dossiers.push_back("sortie");
  fs::create_directory("sortie");
  b.vue.dialogue = [&](LogiqueDialogueLot& d) {
    d.Liste_Click("lstAction", "Contrôler et convertir");
    d.Liste_Click("lstDestination", "Dans un dossier");
    EXPECT_FALSE(d.btnControler_Click(nullptr));  // no folder yet
    d.btnDossier_Click(nullptr);
    d.Liste_Click("lstEchelle", "5000");
    d.Liste_Click("lstTheme", "OD");
    d.Liste_Click("lstPtp", "Points au format MD01 (.ptm)");
    d.Liste_Click("lstSysteme", "EPSG:2056 (MN95)");
    d.Case_Click("chkCsv", true);
    d.Liste_Click("lstEchelle", "12");  // not an entry: nothing changes
    EXPECT_EQ(d.Selection("lstEchelle"), "5000");
    EXPECT_EQ(d.TexteDossier(), "sortie");
    return d.btnControler_Click(nullptr);
  };
  b.atelier.Deposer({"d"});
  b.Attendre();
  EXPECT_EQ(b.boites.boites.at(0).texte, "Choisissez le dossier des cibles, journaux et exports.");
  EXPECT_TRUE(fs::exists("sortie/a.ptp"));
  EXPECT_TRUE(fs::exists("sortie/a.csv"));
  EXPECT_TRUE(fs::exists("sortie/b.ptm"));
  const lot::OptionsLot o = OptionsDuChoix(b.atelier.Choix(), {"d"});
  EXPECT_EQ(o.classeEchelle, 6);
  EXPECT_EQ(o.groupeTheme, 3);
  EXPECT_EQ(o.epsg, 2056);
  EXPECT_FALSE(o.verification);
}

// In German and Italian: the menus, the dialog's caption and lists, a list
// clicked by its entry as shown, the message boxes (a run's summary and a
// fatal error among them) and the table's headings; the choices and the
// files the same as in French.
TEST(Atelier, EnAllemandEtEnItalien) {
  struct {
    Langue langue;
    const char *menu, *titre, *convertir, *dossier, *message, *issue, *bilan, *fatale;
  } const cas[] = {
      {Langue::Allemand, "Datei", "Punktdateien prüfen", "Prüfen und umwandeln", "In einem Ordner",
       "Wählen Sie den Ordner der Zieldateien, Protokolle und Exporte.", "Ergebnis",
       "12 Zeile(n) aus der Quelldatei gelesen\r\n0 Zeile(n) bei der Umwandlung übersprungen\r\n"
       "3 Fehler beim Lesen der Quelldatei festgestellt\r\n0 Fehler beim Schreiben in die Zieldatei festgestellt",
       "Die Datei a.ptp kann nicht geschrieben werden (voll), die Anwendung wird beendet"},
      {Langue::Italien, "File", "Controllare file di punti", "Controllare e convertire", "In una cartella",
       "Scegliete la cartella delle destinazioni, dei giornali e delle esportazioni.", "Esito",
       "12 riga/righe lette nel file sorgente\r\n0 riga/righe ignorata/e durante la conversione\r\n"
       "3 errore/i rilevato/i durante la lettura del file sorgente\r\n"
       "0 errore/i rilevato/i durante la scrittura nel file di destinazione",
       "Il file a.ptp non può essere scritto (voll), l'applicazione verrà chiusa"},
  };
  struct Francais {
    ~Francais() { ChoisirLangue(Langue::Francais); }
  } const ensuite;
  for (const auto& c : cas) {
    ChoisirLangue(c.langue);
    Banc b;
    fs::create_directory("d");
    fs::create_directory("sortie");
    EcrireFichier("d/a.ptv", Points(2));
    b.dialogues.dossiers.push_back("sortie");
    b.vue.dialogue = [&](LogiqueDialogueLot& d) {
      EXPECT_EQ(FormulaireLot().titre, c.titre);
      EXPECT_EQ(EntreesListeLot("lstAction")[1], c.convertir);
      d.Liste_Click("lstAction", c.convertir);
      d.Liste_Click("lstDestination", c.dossier);
      EXPECT_EQ(d.Selection("lstAction"), c.convertir);
      EXPECT_FALSE(d.btnControler_Click(nullptr));
      d.btnDossier_Click(nullptr);
      return d.btnControler_Click(nullptr);
    };
    b.atelier.Deposer({"d"});
    b.Attendre();
    EXPECT_EQ(MenusQuillon()[0].texte, c.menu);
    ASSERT_FALSE(b.boites.boites.empty());
    EXPECT_EQ(b.boites.boites.at(0).texte, c.message);
    EXPECT_EQ(b.atelier.Table().Entete(1), c.issue);
    EXPECT_TRUE(fs::exists("sortie/a.ptp")) << CodeLangue(c.langue);
    b.affichage.MontrerBilan({12, 0, 3, 0});
    b.affichage.MontrerErreurFatale({"a.ptp", RaisonFatale::Ecriture, "voll"});
    ASSERT_GE(b.boites.boites.size(), 3u);
    EXPECT_EQ(b.boites.boites[b.boites.boites.size() - 2].texte, c.bilan);
    EXPECT_EQ(b.boites.boites.back().texte, c.fatale);
  }
}

// Annuler stops as Ctrl-C stops quillon-lot: every file keeps a row, those
// not started are not run and write nothing. Closing during a batch asks;
// Non keeps the window, Oui stops the batch first.
TEST(Atelier, AnnulerEtFermerPendantUnLot) {
  Banc b;
  fs::create_directory("d");
  for (int i = 0; i < 300; ++i) EcrireFichier("d/f" + std::to_string(i) + ".ptv", Points(2000, i));
  b.atelier.Deposer({"d"});
  EXPECT_FALSE(b.atelier.PeutFermer());  // Non
  EXPECT_EQ(b.boites.boites.back().texte, "Un contrôle est en cours. L'arrêter et quitter ?");
  b.atelier.btnAnnuler_Click();
  b.Attendre();
  std::size_t nonTraites = 0;
  for (std::size_t k = 0; k < b.atelier.Table().Taille(); ++k) {
    const LigneFichier& l = b.atelier.Table().Ligne(k);
    if (l.issue == lot::Issue::NonTraite) {
      ++nonTraites;
      EXPECT_FALSE(fs::exists(l.source + ".log")) << l.source;
    }
  }
  EXPECT_EQ(b.atelier.Table().Taille(), 300u);
  EXPECT_GT(nonTraites, 0u);

  b.atelier.Deposer({"d"});
  b.boites.reponses.push_back(true);
  EXPECT_TRUE(b.atelier.PeutFermer());
  EXPECT_FALSE(b.atelier.EtatAvancement().enCours);
}

TEST(Atelier, OrdreNaturelEtTri) {
  const struct {
    const char *a, *b;
    bool avant;
  } cas[] = {{"f2", "f10", true}, {"f10", "f2", false}, {"F1", "f2", true}, {"a/f01", "a/f1", true},
             {"a1b2", "a1b10", true}, {"x", "x1", true}, {"é", "z", false}, {"f1000", "f999", false}};
  for (const auto& c : cas) EXPECT_EQ(AvantNaturel(c.a, c.b), c.avant) << c.a << " " << c.b;

  TableFichiers t;
  for (const char* nom : {"f10", "f2", "f1"}) {
    LigneFichier l;
    l.source = nom;
    l.issue = lot::Issue::Converti;
    l.comptes[0] = std::string(nom) == "f2" ? 5 : 1;
    t.Ajouter(l);
  }
  LigneFichier rejets;
  rejets.source = "f30";
  rejets.issue = lot::Issue::Rejets;
  t.Ajouter(rejets);
  const auto ordre = [&] {
    std::string s;
    for (std::size_t k = 0; k < t.Taille(); ++k) s += t.Ligne(k).source + " ";
    return s;
  };
  EXPECT_EQ(ordre(), "f30 f1 f2 f10 ");
  t.Trier(TableFichiers::Colonne::Source);
  EXPECT_EQ(ordre(), "f1 f2 f10 f30 ");
  t.Trier(TableFichiers::Colonne::Source);
  EXPECT_EQ(ordre(), "f30 f10 f2 f1 ");
  t.Trier(TableFichiers::Colonne::Lues);
  EXPECT_EQ(ordre(), "f30 f1 f10 f2 ");
  rejets.issue = lot::Issue::Converti;
  t.Ajouter(rejets);  // the same source: its row replaced
  EXPECT_EQ(t.Taille(), 4u);
}

// A point clicked is chosen with its row in the list; a row clicked centres
// its point; the tooltip tells the line, its identity and its messages.
TEST(Atelier, CarteEtListes) {
  Banc b;
  EcrireFichier("a.ptv", Points(5) + kRejetee);
  b.atelier.Deposer({"a.ptv"});
  b.Attendre();
  ASSERT_NE(b.atelier.Montre(), nullptr);
  b.atelier.Carte_Taille(400, 300);
  b.atelier.btnVueDEnsemble_Click();
  const VueCarte& v = b.atelier.Vue();
  const double px = v.Px(2600125.450), py = v.Py(1200456.780);
  EXPECT_EQ(b.atelier.Carte_Survol(px, py), "ligne 6 — ?\nLe numéro de point: '      10010x' n'est pas valide");
  b.atelier.Carte_Clic(px, py);
  EXPECT_EQ(b.atelier.LigneChoisie(), 5u);
  EXPECT_EQ(b.atelier.RangDansListe(true), 0u);
  b.atelier.Carte_Glisser(50, 0);
  b.atelier.Liste_Clic(true, 0);
  EXPECT_NEAR(b.atelier.Vue().Px(2600125.450), 200, 1e-6);
  EXPECT_EQ(b.atelier.Dessiner().croix.size(), 1u);
  b.atelier.btnOuvrirDossier_Click();
  EXPECT_EQ(b.documents.dossiers, std::vector<std::string>{"."});
  b.atelier.btnVoirRapport_Click();
  EXPECT_EQ(b.documents.ouverts, std::vector<std::string>{"quillon-a.ptv.html"});
}

// The printed pages: the verdict and counts first, the picture showing what
// the window shows, every rejected line on some page, nothing below the
// printable area, on paper of either orientation.
TEST(Atelier, PagesImprimees) {
  const struct {
    const char* texte;
    std::size_t colonnes;
    std::vector<std::string> lignes;
  } coupes[] = {{"ligne 1 — un deux trois", 12, {"ligne 1 —", "un deux", "trois"}},
                {"abcdefghij", 4, {"abcd", "efgh", "ij"}},
                {"été été", 3, {"été", "été"}},
                {"a\nb", 10, {"a", "b"}}};
  for (const auto& c : coupes) EXPECT_EQ(CouperTexte(c.texte, c.colonnes), c.lignes) << c.texte;

  Banc b;
  std::string texte = Points(10);
  for (int i = 0; i < 150; ++i) texte += kRejetee;
  EcrireFichier("a.ptv", texte);
  b.atelier.Deposer({"a.ptv"});
  b.Attendre();
  ASSERT_NE(b.atelier.Montre(), nullptr);
  b.atelier.Carte_Taille(600, 300);
  b.atelier.btnVueDEnsemble_Click();
  for (const auto& [largeur, hauteur] : {std::pair{190.0, 277.0}, std::pair{277.0, 190.0}}) {
    const std::vector<Page> pages = MettreEnPages(b.atelier.Table().Ligne(0), *b.atelier.Montre(),
                                                  b.atelier.Vue(), std::nullopt, largeur, hauteur);
    ASSERT_GE(pages.size(), 2u);
    ASSERT_EQ(pages[0].cartes.size(), 1u);
    const CartePage& carte = pages[0].cartes[0];
    EXPECT_EQ(carte.largeur, largeur);
    if (hauteur > largeur) {
      EXPECT_NEAR(carte.hauteur / carte.largeur, 0.5, 0.01);  // as the window's
    }
    EXPECT_EQ(carte.dessin.croix.size(), 150u);
    EXPECT_EQ(pages[0].textes[2].texte, "150 ligne(s) rejetée(s)");
    std::set<std::string> lignes;
    for (const Page& page : pages) {
      for (const TextePage& t : page.textes) {
        EXPECT_LE(t.y, hauteur);
        if (t.texte.starts_with("ligne ")) lignes.insert(t.texte.substr(0, t.texte.find(' ', 6)));
      }
    }
    EXPECT_EQ(lignes.size(), 150u);
    EXPECT_EQ(pages.back().textes.back().texte,
              "Quillon — a.ptv — page " + std::to_string(pages.size()) + " / " + std::to_string(pages.size()));
  }
}

}  // namespace
}  // namespace quillon::test
