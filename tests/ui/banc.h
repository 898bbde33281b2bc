// What the window tests share: fakes behind the platform interfaces, and a
// main window wired to them over real files in a temporary folder.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <QStringList>
#include <QTemporaryDir>

#include "conversion/run_settings.h"
#include "ui/main_window.h"
#include "ui/registry.h"
#include "ui/seams.h"
#include "ui/windowed_display.h"

namespace quillon::test {

// Open and save dialogs answer from one queue; an empty queue cancels.
struct FauxDialogues : DialoguesFichiers {
  std::deque<FichierChoisi> reponses;
  QStringList filtres;  // of each dialog shown
  std::optional<FichierChoisi> Ouvrir(QWidget*, const QString&, const QString& filtre, int) override {
    return Repondre(filtre);
  }
  std::optional<FichierChoisi> EnregistrerSous(QWidget*, const QString&, const QString& filtre, int) override {
    return Repondre(filtre);
  }
  std::optional<FichierChoisi> Repondre(const QString& filtre);
};

struct FaussesBoites : BoitesMessages {
  struct Boite {
    bool fatale;
    QString titre, texte;
  };
  std::vector<Boite> boites;
  std::function<void()> pendantLaBoite;  // runs while a box is "shown"
  void Message(QWidget*, const QString& titre, const QString& texte) override { Montrer({false, titre, texte}); }
  void ErreurFatale(QWidget*, const QString& texte) override { Montrer({true, "Erreur fatale", texte}); }
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

// A main window over the fakes, set up as windowed mode sets it up.
struct Banc {
  FauxDialogues dialogues;
  FaussesBoites boites;
  FausseFin fin;
  FauxRegistre registre;
  FauxProgrammes programmes;
  Services services{dialogues, boites, fin, registre, programmes};
  AffichageFenetre affichage{boites};
  ReglagesExecution reglages;
  QTemporaryDir dossier;
  std::unique_ptr<frmQuillon> fenetre;

  Banc();
  std::string Chemin(const char* nom) const;  // in the temporary folder
  void Ouvrir(const char* nom, int indexFiltre);
  void EnregistrerSous(const char* nom, int indexFiltre);
};

// The four-count summary that a run shows in its box (the log holds the same
// lines, each ending with CR LF).
QString TexteBilan(int lues, int ignorees, int erreursLecture, int erreursEcriture);

void EcrireFichier(const std::string& chemin, const std::string& octets);
std::optional<std::string> LireFichier(const std::string& chemin);  // nullopt: no such file

}  // namespace quillon::test
