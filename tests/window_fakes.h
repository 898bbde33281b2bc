// Fakes behind the windows' platform interfaces, for the window logic's
// tests and for each front end's.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "ui/registry.h"
#include "ui/seams.h"

namespace quillon::test {

// Open and save dialogs answer from one queue; an empty queue cancels.
struct FauxDialogues : DialoguesFichiers {
  std::deque<FichierChoisi> reponses;
  std::vector<std::string> titres, filtres;  // of each dialog shown
  std::optional<FichierChoisi> Ouvrir(Parent, const std::string& titre, const std::string& filtre, int) override {
    return Repondre(titre, filtre);
  }
  std::optional<FichierChoisi> EnregistrerSous(Parent, const std::string& titre, const std::string& filtre,
                                               int) override {
    return Repondre(titre, filtre);
  }
  std::optional<FichierChoisi> Repondre(const std::string& titre, const std::string& filtre) {
    titres.push_back(titre);
    filtres.push_back(filtre);
    if (reponses.empty()) return std::nullopt;
    const FichierChoisi reponse = reponses.front();
    reponses.pop_front();
    return reponse;
  }
};

struct FaussesBoites : BoitesMessages {
  struct Boite {
    bool fatale;
    std::string titre, texte;
  };
  std::vector<Boite> boites;
  std::function<void()> pendantLaBoite;  // runs while a box is "shown"
  void Message(Parent, const std::string& titre, const std::string& texte) override {
    Montrer({false, titre, texte});
  }
  void ErreurFatale(Parent, const std::string& texte) override { Montrer({true, "Erreur fatale", texte}); }
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

// All of them, as the windows take them.
struct FauxServices {
  FauxDialogues dialogues;
  FaussesBoites boites;
  FausseFin fin;
  FauxRegistre registre;
  FauxProgrammes programmes;
  Services services{dialogues, boites, fin, registre, programmes};
};

// The four-count summary that a run shows in its box (the log holds the same
// lines, each ending with CR LF), in UTF-8.
inline std::string TexteBilan(int lues, int ignorees, int erreursLecture, int erreursEcriture) {
  return std::to_string(lues) + " ligne(s) lues dans le fichier source\r\n" + std::to_string(ignorees) +
         " ligne(s) ignorée(s) lors de la conversion\r\n" + std::to_string(erreursLecture) +
         " erreur(s) constatée(s) lors de la lecture du fichier source\r\n" + std::to_string(erreursEcriture) +
         " erreur(s) constatée(s) lors de l'écriture dans le fichier cible";
}

}  // namespace quillon::test
