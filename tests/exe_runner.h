// Runs the real quillon executable in a folder and collects what it did.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace quillon::test {

struct ResultatExe {
  std::string sortie;      // standard output, bytes as written
  int codeSortie = -1;     // exit status, -1 when killed by a signal
  int signal = 0;          // the signal that ended it, 0 if none
  long memoireMaxKo = 0;   // peak resident memory
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
};

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
