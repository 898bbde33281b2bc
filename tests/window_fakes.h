// Fakes behind the windows' platform interfaces, for the window logic's
// tests, and a driver of each front end's windows over them (Pilote).
#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "conversion/run_settings.h"
#include "io/encoding.h"
#include "io/journal.h"
#include "test_support.h"
#include "ui/forms.h"
#include "ui/registry.h"
#include "ui/seams.h"
#include "ui/window_logic.h"

namespace quillon::test {

// Open and save dialogs answer from one queue; an empty queue cancels.
struct FauxDialogues : DialoguesFichiers {
  std::deque<FichierChoisi> reponses;
  std::vector<std::string> titres, filtres;  // of each dialog shown
  std::optional<FichierChoisi> Ouvrir(Parent, const std::string& titre, const std::string& filtre, int) override {
    titres.push_back(titre);
    filtres.push_back(filtre);
    if (reponses.empty()) return std::nullopt;
    const FichierChoisi reponse = reponses.front();
    reponses.pop_front();
    return reponse;
  }
  std::optional<FichierChoisi> EnregistrerSous(Parent parent, const std::string& titre, const std::string& filtre,
                                               int index) override {
    return Ouvrir(parent, titre, filtre, index);
  }
  std::deque<std::vector<std::string>> plusieurs;  // answers of OuvrirPlusieurs
  std::vector<std::string> OuvrirPlusieurs(Parent, const std::string& titre, const std::string& filtre) override {
    titres.push_back(titre);
    filtres.push_back(filtre);
    if (plusieurs.empty()) return {};
    std::vector<std::string> reponse = plusieurs.front();
    plusieurs.pop_front();
    return reponse;
  }
  std::deque<std::string> dossiers;  // answers of ChoisirDossier
  std::optional<std::string> ChoisirDossier(Parent, const std::string& titre, const std::string&) override {
    titres.push_back(titre);
    if (dossiers.empty()) return std::nullopt;
    const std::string reponse = dossiers.front();
    dossiers.pop_front();
    return reponse;
  }
};

struct FaussesBoites : BoitesMessages {
  struct Boite {
    bool fatale;
    std::string titre, texte;
    std::vector<std::string> boutons;  // the buttons beside OK, if any
  };
  std::vector<Boite> boites;
  std::deque<int> choix;  // the buttons picked in the boxes that have some, one a box; then OK
  std::function<void()> pendantLaBoite;  // runs while a box is "shown"
  void Message(Parent, const std::string& titre, const std::string& texte) override {
    Montrer({false, titre, texte, {}});
  }
  int MessageAvecBoutons(Parent, const std::string& titre, const std::string& texte,
                         const std::vector<std::string>& boutons) override {
    Montrer({false, titre, texte, boutons});
    if (choix.empty()) return 0;
    const int pris = choix.front();
    choix.pop_front();
    return pris;
  }
  void ErreurFatale(Parent, const std::string& texte) override { Montrer({true, "Erreur fatale", texte, {}}); }
  std::deque<bool> reponses;  // to the questions, one each; then Non
  bool Question(Parent, const std::string& titre, const std::string& texte) override {
    Montrer({false, titre, texte, {"Oui", "Non"}});
    if (reponses.empty()) return false;
    const bool oui = reponses.front();
    reponses.pop_front();
    return oui;
  }
  void Montrer(const Boite& boite) {
    boites.push_back(boite);
    if (pendantLaBoite) pendantLaBoite();
  }
};

struct FausseFin : FinProgramme {
  int appels = 0;
  void Terminer() override { ++appels; }
};

// Values by (key, value name), under HKEY_LOCAL_MACHINE.
struct FauxRegistre : Registre {
  std::map<std::pair<std::string, std::string>, std::string> valeurs;
  bool GetKeyValue(uint32_t racine, const std::string& cle, const std::string& nom, std::string& texte) override {
    const auto it = valeurs.find({cle, nom});
    const bool lu = racine == kHkeyLocalMachine && it != valeurs.end();
    texte = lu ? it->second : std::string();
    return lu;
  }
};

// The files that exist are the programs that start.
struct FauxProgrammes : Programmes {
  std::set<std::string> fichiers;
  std::vector<std::string> demarres;
  bool FichierExiste(const std::string& chemin) override { return fichiers.count(chemin) != 0; }
  bool Demarrer(const std::string& chemin) override {
    if (fichiers.count(chemin) != 0) demarres.push_back(chemin);
    return fichiers.count(chemin) != 0;
  }
};

// Documents go into the current folder; each opened is kept.
struct FaussesPreferences : Preferences {
  std::map<std::string, std::string> valeurs;
  std::string Lire(const std::string& cle) override { return valeurs.contains(cle) ? valeurs.at(cle) : ""; }
  void Ecrire(const std::string& cle, const std::string& valeur) override { valeurs[cle] = valeur; }
};

struct FauxDocuments : Documents {
  std::vector<std::string> ouverts;
  std::string DossierTemporaire() override { return ""; }
  bool Ouvrir(const std::string& chemin) override {
    ouverts.push_back(chemin);
    return true;
  }
  std::vector<std::string> dossiers;
  bool OuvrirDossier(const std::string& chemin) override {
    dossiers.push_back(chemin);
    return true;
  }
};

// All of them, as the windows take them.
struct FauxServices {
  FauxDialogues dialogues;
  FaussesBoites boites;
  FausseFin fin;
  FauxRegistre registre;
  FauxProgrammes programmes;
  FauxDocuments documents;
  FaussesPreferences preferences;
  Services services{dialogues, boites, fin, registre, programmes, documents, preferences};
};

// A folder of its own that is the current folder while it lives: the paths
// the fake dialogs give are relative.
struct DossierCourant : DossierTemporaire {
  std::filesystem::path avant = std::filesystem::current_path();
  DossierCourant() { std::filesystem::current_path(chemin()); }
  ~DossierCourant() { std::filesystem::current_path(avant); }
};

enum class Touche { Entree, Echap };

// One front end's windows over the fakes, driven as a user drives them, so
// that the same scenarios (window_views_test.cc) run on Qt and on Win32. A
// window is named by its form ("frmQuillon" for the main window), a control
// by its name in the form.
struct Pilote : FauxServices {
  DossierCourant dossier;
  AffichageFenetre affichage{boites};
  ReglagesExecution reglages;

  Pilote() {
    InitialiserTables(reglages);
    reglages.affichage = &affichage;
  }
  virtual ~Pilote() = default;
  virtual LogiqueQuillon& Logique() = 0;
  // The menu entry clicked; a disabled one takes nothing.
  virtual void Menu(Commande commande) = 0;
  virtual bool Actif(Commande commande) = 0;
  virtual bool Coche(Commande commande) = 0;
  virtual bool Visible(const std::string& forme) = 0;
  // The caption of the window, or the text of one of its controls.
  virtual std::string Texte(const std::string& forme, const std::string& controle = "") = 0;
  virtual bool AFocus(const std::string& forme, const std::string& controle) = 0;
  virtual void Cliquer(const std::string& forme, const std::string& bouton) = 0;
  virtual void Frapper(const std::string& forme, const std::string& controle, Touche touche) = 0;
  virtual void Choisir(const std::string& forme, const std::string& liste, int index) = 0;
  virtual int Selection(const std::string& forme, const std::string& liste) = 0;
  virtual void FermerParLaBarre(const std::string& forme) = 0;

  // The entry clicked, and a file picked in the dialog it shows.
  void Commander(Commande commande, const char* nom, int index) {
    dialogues.reponses.push_back({nom, index});
    Menu(commande);
  }
};

std::unique_ptr<Pilote> NouveauPilote();  // each front end's, shown

// Value lines for the workbench's tests: a good one, one whose point number
// is rejected, and `n` good points 3 m apart from Y 2600000 on, numbered
// from 100000 + `depart`.
inline const std::string kBonne =
    "01  12  34      100101 1OR 11.  2600123.450 1200456.780  450.120        borne        BO\r\n";
inline const std::string kRejetee =
    "01  12  34      10010x 1OR 11.  2600125.450 1200456.780  450.120        borne        BO\r\n";
inline std::string Points(int n, int depart = 0) {
  std::string texte;
  for (int i = 0; i < n; ++i) {
    std::string l = kBonne;
    l.replace(16, 6, std::to_string(100000 + depart + i));
    l.replace(32, 7, std::to_string(2600000 + 3 * (depart + i)));
    texte += l;
  }
  return texte;
}

// What the printing tests print: 20 good lines, then 70 whose point numbers
// are spoilt.
inline std::string FichierAImprimer() {
  std::string rejetees = Points(70, 20);
  for (std::size_t k = 21; k < rejetees.size(); k += kBonne.size()) rejetees[k] = 'x';
  return Points(20) + rejetees;
}

// The printed pages' text (UTF-8) says the verdict, the four counts and
// every rejected line's number.
inline void VerifierTexteImprime(const std::string& texte) {
  EXPECT_NE(texte.find("70 ligne(s) rejetée(s)"), std::string::npos) << texte;
  for (const std::string& ligne : TexteBilan(90, 0, 70, 0)) {
    EXPECT_NE(texte.find(Cp1252VersUtf8(ligne)), std::string::npos) << ligne;
  }
  for (int numero = 21; numero <= 90; ++numero) {
    const std::string cherche = "ligne " + std::to_string(numero) + " ";
    EXPECT_NE(texte.find(cherche), std::string::npos) << cherche;
  }
}

}  // namespace quillon::test
