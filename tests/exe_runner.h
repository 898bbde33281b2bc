// Runs the real quillon executable in a folder and collects what it did.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace quillon::test {

struct ResultatExe {
  std::string sortie;      // standard output, bytes as written
  int codeSortie = -1;     // exit status, -1 when killed by a signal
  int signal = 0;          // the signal that ended it, 0 if none
  // Peak resident memory. Linux counts in it the test program's own at the
  // fork: run each test in a program of its own, as ctest does.
  long memoireMaxKo = 0;
};

struct OptionsExe {
  // KEY=VALUE; the environment otherwise holds PATH and LC_ALL=C.
  std::vector<std::string> environnement;
  // A run as root drops to "nobody", so that file permissions apply. The
  // program it runs is then a copy that "nobody" can reach, wherever the
  // build is.
  bool sansPrivileges = false;
  // Nobody reads the standard output: its pipe is closed before the
  // program writes.
  bool sortieFermee = false;
  // Under Windows: the whole command line, instead of the program's path
  // and the arguments.
  std::string ligneCommande;
};

// The executable the runs start: quillon built for Linux, or, when the
// variable QUILLON_EXE_WINDOWS names quillon.exe, that program under wine
// (QUILLON_WINE, "/usr/bin/wine" by default), started by quillon_lanceur.exe
// (QUILLON_LANCEUR) with the Windows command line a user would type: the
// program's path in double quotes, a blank, and the arguments joined by
// blanks, as the Linux build rebuilds its argument text.
bool SousWindows();

// A Windows command line for the program: `texte` after its name, in
// double quotes, and one blank. `programme` is a Unix path.
std::string LigneCommandeWindows(const std::string& programme, const std::string& texte);

// Starts `mots` (the program's path first) in `dossier` with exactly the
// environment `env`, its standard output on a pipe whose reading end is
// left in `sortie`. `enfant`, when given, runs in the new process after the
// change of folder, just before the program starts; it returns false to give
// up (exit status 125).
pid_t Demarrer(std::vector<std::string> mots, std::vector<std::string> env, const std::string& dossier,
               int& sortie, const std::function<bool()>& enfant = {});

// What wine needs of the tests' environment, added to `env`.
void AjouterEnvironnementWine(std::vector<std::string>& env);

// A run under way: started by the constructor, collected by Attendre.
class ProcessusQuillon {
 public:
  // `arguments` are handed over as they are (one element each); standard
  // error is the tests' own.
  ProcessusQuillon(const std::vector<std::string>& arguments, const std::string& dossier,
                   const OptionsExe& options = {});
  ~ProcessusQuillon();
  ProcessusQuillon(const ProcessusQuillon&) = delete;
  ProcessusQuillon& operator=(const ProcessusQuillon&) = delete;

  pid_t pid() const { return pid_; }
  void Signaler(int signal) const;
  // Reads the standard output to its end and waits for the program.
  ResultatExe Attendre();

 private:
  pid_t pid_ = -1;
  int sortie_ = -1;
};

ResultatExe LancerQuillon(const std::vector<std::string>& arguments, const std::string& dossier,
                          const OptionsExe& options = {});

std::string LireFichier(const std::string& chemin);
void EcrireFichier(const std::string& chemin, const std::string& contenu);

// The temporary files of unfinished writes left in a folder
// ("*.quillon-XXXXXX.tmp").
std::vector<std::string> Temporaires(const std::string& dossier);

// A fresh scratch folder, removed with the object.
class DossierTemporaire {
 public:
  DossierTemporaire();
  ~DossierTemporaire();
  DossierTemporaire(const DossierTemporaire&) = delete;
  DossierTemporaire& operator=(const DossierTemporaire&) = delete;
  const std::string& chemin() const { return chemin_; }
  std::string operator/(const std::string& nom) const { return chemin_ + "/" + nom; }

 private:
  std::string chemin_;
};

}  // namespace quillon::test
