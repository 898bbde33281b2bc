// Runs the real quillon executable in a folder and collects what it did.
#pragma once

#include <string>
#include <vector>

namespace quillon::test {

struct ResultatExe {
  std::string sortie;      // standard output, bytes as written
  int codeSortie = -1;     // exit status, -1 when killed by a signal
  int signal = 0;          // the signal that ended it, 0 if none
  long memoireMaxKo = 0;   // peak resident memory
};

// `arguments` are handed over as they are (one element each); the
// environment holds PATH and LC_ALL=C unless `environnement` says otherwise
// (KEY=VALUE); standard error is the tests' own. With `sansPrivileges` a
// run as root drops to "nobody", so that file permissions apply.
// With `sortieFermee` nobody reads the standard output: its pipe is closed
// before the program writes.
ResultatExe LancerQuillon(const std::vector<std::string>& arguments, const std::string& dossier,
                          const std::vector<std::string>& environnement = {}, bool sansPrivileges = false,
                          bool sortieFermee = false);

std::string LireFichier(const std::string& chemin);
void EcrireFichier(const std::string& chemin, const std::string& contenu);

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
