// Runs the real quillon-lot executable in a folder, its standard output
// read as it comes.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace quillon::test {

struct ResultatLot {
  std::string sortie;  // standard output, line ends as written
  std::string erreur;  // standard error
  int code = -1;       // exit status, -1 when killed by a signal
  int signal = 0;
};

// quillon-lot built for Linux, or, when QUILLON_LOT_EXE_WINDOWS names
// quillon-lot.exe, that program under wine (QUILLON_WINE, "/usr/bin/wine"
// by default), given the same words.
class ProcessusLot {
 public:
  ProcessusLot(const std::vector<std::string>& arguments, const std::string& dossier);
  ~ProcessusLot();
  ProcessusLot(const ProcessusLot&) = delete;
  ProcessusLot& operator=(const ProcessusLot&) = delete;

  // Reads standard output until it holds `texte` or ends; true when found.
  bool AttendreSortie(const std::string& texte);
  void Signaler(int signal) const;
  ResultatLot Attendre();

 private:
  pid_t pid_ = -1;
  int sortie_ = -1;
  std::string fichierErreur_;
  std::string lu_;
  bool fin_ = false;  // standard output has ended
};

ResultatLot LancerLot(const std::vector<std::string>& arguments, const std::string& dossier);

bool LotSousWindows();

// The lines of the report, without their line ends.
std::vector<std::string> LignesRapport(const std::string& sortie);
// A report line's fields, split at the tabs.
std::vector<std::string> Champs(const std::string& ligne);

}  // namespace quillon::test
