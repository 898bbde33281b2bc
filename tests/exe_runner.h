// Runs the real programs, quillon and quillon-lot, in a folder and collects
// what they did.
#pragma once

#include <sys/types.h>

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "test_support.h"

namespace quillon::test {

enum class Programme { Quillon, Lot };

struct ResultatExe {
  std::string sortie;      // standard output, bytes as written
  std::string erreur;      // standard error, bytes as written
  int codeSortie = -1;     // exit status, -1 when killed by a signal
  int signal = 0;          // the signal that ended it, 0 if none
  // Peak resident memory. Linux counts in it the test program's own at the
  // fork: run each test in a program of its own, as ctest does.
  long memoireMaxKo = 0;
};

struct OptionsExe {
  OptionsExe(Programme p = Programme::Quillon) : programme(p) {}  // a program alone converts
  Programme programme;
  // KEY=VALUE; the environment otherwise holds PATH and LC_ALL=C.
  std::vector<std::string> environnement;
  // A run of quillon as root drops to "nobody", so that file permissions
  // apply; it runs a copy of the program that "nobody" can reach.
  bool sansPrivileges = false;
  // The standard output's pipe is closed before the program writes.
  bool sortieFermee = false;
  // quillon under Windows: the whole command line, instead of the
  // program's path and the arguments.
  std::string ligneCommande;
};

// The programs the runs start: those built for Linux beside this test program
// (or others that the variables QUILLON_EXE and QUILLON_LOT_EXE name: the
// 32-bit build), or, when the variable
// QUILLON_EXE_WINDOWS names quillon.exe, that program and the quillon-lot.exe
// beside it, under wine (QUILLON_WINE, "/usr/bin/wine" by default).
// quillon.exe is started by quillon_lanceur.exe (QUILLON_LANCEUR) with the
// Windows command line a user would type: the program's path in double
// quotes, a blank, and the arguments joined by blanks, as the Linux build
// rebuilds its argument text. quillon-lot.exe gets the words one by one.
bool SousWindows();

// A Windows command line for the program: `texte` after its name, in
// double quotes, and one blank. `programme` is a Unix path.
std::string LigneCommandeWindows(const std::string& programme, const std::string& texte);

// A run under way: started by the constructor, collected by Attendre. The
// arguments are handed over as they are (one element each); SIGINT takes
// its default action in the program, as a user's Ctrl-C finds it.
class ProcessusQuillon {
 public:
  ProcessusQuillon(const std::vector<std::string>& arguments, const std::string& dossier,
                   const OptionsExe& options = {});
  ~ProcessusQuillon();
  ProcessusQuillon(const ProcessusQuillon&) = delete;
  ProcessusQuillon& operator=(const ProcessusQuillon&) = delete;

  pid_t pid() const { return pid_; }
  void Signaler(int signal) const;
  // Reads the standard output until it holds `texte`; false when the output
  // ended first, or when nothing came for two minutes.
  bool AttendreSortie(const std::string& texte);
  // Reads the standard output to its end and waits for the program.
  ResultatExe Attendre();

 private:
  bool Lire();  // a piece of the standard output; false at its end

  pid_t pid_ = -1;
  int sortie_ = -1;
  std::FILE* erreur_ = nullptr;
  std::string lu_;
  bool fin_ = false;  // the standard output has ended
};

// Waits until `condition` holds, looking every millisecond; false after two
// minutes.
bool AttendreQue(const std::function<bool()>& condition);

// The number of a process of this machine that has ended (a child that
// exits at once, reaped).
uint32_t ProcessusTermine();

ResultatExe LancerQuillon(const std::vector<std::string>& arguments, const std::string& dossier,
                          const OptionsExe& options = {});


// The temporary files of unfinished writes left in a folder
// ("*.quillon-XXXXXX.tmp").
std::vector<std::string> Temporaires(const std::string& dossier);


}  // namespace quillon::test
