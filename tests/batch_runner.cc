#include "batch_runner.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <utility>

#include "exe_runner.h"

namespace quillon::test {

bool LotSousWindows() {
  const char* exe = std::getenv("QUILLON_LOT_EXE_WINDOWS");
  return exe != nullptr && *exe != '\0';
}

ProcessusLot::ProcessusLot(const std::vector<std::string>& arguments, const std::string& dossier) {
  std::vector<std::string> mots;
  std::vector<std::string> env = {"PATH=/usr/bin:/bin", "LC_ALL=C.UTF-8"};
  if (LotSousWindows()) {
    const char* wine = std::getenv("QUILLON_WINE");
    mots = {wine != nullptr && *wine != '\0' ? wine : "/usr/bin/wine", std::getenv("QUILLON_LOT_EXE_WINDOWS")};
    AjouterEnvironnementWine(env);
  } else {
    mots = {QUILLON_LOT_EXE};
  }
  mots.insert(mots.end(), arguments.begin(), arguments.end());
  // Standard error goes to a file, opened by its full path once the new
  // process is in its folder.
  fichierErreur_ = std::filesystem::absolute(dossier + "/.erreur-standard").string();
  pid_ = Demarrer(std::move(mots), std::move(env), dossier, sortie_, [this] {
    const int erreur = open(fichierErreur_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (erreur >= 0) dup2(erreur, STDERR_FILENO);
    // SIGINT as a user's Ctrl-C finds it, whatever the test runner did.
    signal(SIGINT, SIG_DFL);
    return true;
  });
}

ProcessusLot::~ProcessusLot() {
  if (pid_ > 0) {
    kill(pid_, SIGKILL);
    Attendre();
  }
}

bool ProcessusLot::AttendreSortie(const std::string& texte) {
  char tampon[4096];
  while (lu_.find(texte) == std::string::npos) {
    // A program that hangs fails the test instead of the whole suite.
    pollfd attente{sortie_, POLLIN, 0};
    if (poll(&attente, 1, 120 * 1000) <= 0) return false;
    const ssize_t n = read(sortie_, tampon, sizeof tampon);
    if (n <= 0) {
      fin_ = true;
      return false;
    }
    lu_.append(tampon, static_cast<std::size_t>(n));
  }
  return true;
}

void ProcessusLot::Signaler(int signal) const { kill(pid_, signal); }

ResultatLot ProcessusLot::Attendre() {
  ResultatLot r;
  AttendreSortie(std::string(1, '\0'));  // to the end
  if (!fin_) kill(pid_, SIGKILL);          // hung: the test fails on what it got
  close(sortie_);
  sortie_ = -1;
  int statut = 0;
  waitpid(pid_, &statut, 0);
  pid_ = -1;
  if (WIFEXITED(statut)) r.code = WEXITSTATUS(statut);
  if (WIFSIGNALED(statut)) r.signal = WTERMSIG(statut);
  r.sortie = lu_;
  r.erreur = LireFichier(fichierErreur_);
  unlink(fichierErreur_.c_str());
  return r;
}

ResultatLot LancerLot(const std::vector<std::string>& arguments, const std::string& dossier) {
  return ProcessusLot(arguments, dossier).Attendre();
}

std::vector<std::string> LignesRapport(const std::string& sortie) {
  std::vector<std::string> lignes;
  std::istringstream flux(sortie);
  for (std::string ligne; std::getline(flux, ligne);) {
    if (!ligne.empty() && ligne.back() == '\r') ligne.pop_back();
    lignes.push_back(ligne);
  }
  return lignes;
}

std::vector<std::string> Champs(const std::string& ligne) {
  std::vector<std::string> champs;
  std::size_t debut = 0;
  for (std::size_t tab; (tab = ligne.find('\t', debut)) != std::string::npos; debut = tab + 1) {
    champs.push_back(ligne.substr(debut, tab - debut));
  }
  champs.push_back(ligne.substr(debut));
  return champs;
}

}  // namespace quillon::test
