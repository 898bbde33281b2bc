#include "exe_runner.h"

#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

// The program as "nobody" can run it: the build folder may sit where only
// root may go (root's home folder), so a copy in a folder of the system's
// temporary folder, open to all, made once per program and test program.
std::string ProgrammeSansPrivileges(const fs::path& programme) {
  static const DossierTemporaire dossier;
  const std::string chemin = dossier / programme.filename();
  if (!fs::exists(chemin)) fs::copy_file(programme, chemin);
  chmod(dossier.chemin().c_str(), 0755);
  chmod(chemin.c_str(), 0755);
  return chemin;
}

const char* Variable(const char* nom, const char* defaut = nullptr) {
  const char* valeur = std::getenv(nom);
  return valeur != nullptr && *valeur != '\0' ? valeur : defaut;
}

// The words that start the run, and what wine needs of the environment.
std::vector<std::string> Mots(const std::vector<std::string>& arguments, const OptionsExe& options, bool baisser,
                              std::vector<std::string>& env) {
  const bool lot = options.programme == Programme::Lot;
  if (!SousWindows()) {
    const char* programme = lot ? Variable("QUILLON_LOT_EXE", QUILLON_LOT_EXE)
                                : Variable("QUILLON_EXE", QUILLON_EXE);
    std::vector<std::string> mots = {baisser ? ProgrammeSansPrivileges(programme) : programme};
    mots.insert(mots.end(), arguments.begin(), arguments.end());
    return mots;
  }
  for (const char* nom : {"HOME", "WINEPREFIX", "WINEDEBUG", "WINESERVER", "WINEARCH"}) {
    if (const char* valeur = Variable(nom)) env.push_back(std::string(nom) + "=" + valeur);
  }
  const fs::path exe = Variable("QUILLON_EXE_WINDOWS");
  if (lot) {
    std::vector<std::string> mots = {Variable("QUILLON_WINE", "/usr/bin/wine"), exe.parent_path() / "quillon-lot.exe"};
    mots.insert(mots.end(), arguments.begin(), arguments.end());
    return mots;
  }
  std::string texte;
  for (std::size_t i = 0; i < arguments.size(); ++i) texte += (i > 0 ? " " : "") + arguments[i];
  const std::string ligne = options.ligneCommande.empty() ? LigneCommandeWindows(exe, texte) : options.ligneCommande;
  env.push_back("QUILLON_LIGNE_COMMANDE=" + ligne);
  return {Variable("QUILLON_WINE", "/usr/bin/wine"), Variable("QUILLON_LANCEUR", "quillon_lanceur.exe")};
}

}  // namespace

bool SousWindows() { return Variable("QUILLON_EXE_WINDOWS") != nullptr; }

std::string LigneCommandeWindows(const std::string& programme, const std::string& texte) {
  std::string chemin = "Z:" + fs::absolute(programme).string();
  std::replace(chemin.begin(), chemin.end(), '/', '\\');
  return "\"" + chemin + "\" " + texte;
}

ProcessusQuillon::ProcessusQuillon(const std::vector<std::string>& arguments, const std::string& dossier,
                                   const OptionsExe& options) {
  const bool baisser = options.sansPrivileges && geteuid() == 0;
  // The case's own settings, and the defaults it does not set.
  std::vector<std::string> env = options.environnement;
  for (const std::string defaut : {"PATH=/usr/bin:/bin", "LC_ALL=C"}) {
    const std::string cle = defaut.substr(0, defaut.find('=') + 1);
    if (std::none_of(env.begin(), env.end(), [&](auto& e) { return e.starts_with(cle); })) env.push_back(defaut);
  }
  std::vector<std::string> mots = Mots(arguments, options, baisser, env);
  std::vector<char*> argv, envp;
  for (std::string& m : mots) argv.push_back(m.data());
  for (std::string& e : env) envp.push_back(e.data());
  argv.push_back(nullptr);
  envp.push_back(nullptr);

  int tuyau[2];
  erreur_ = std::tmpfile();
  if (erreur_ == nullptr || pipe(tuyau) != 0) throw std::runtime_error("pipe");
  pid_ = fork();
  if (pid_ == 0) {
    dup2(tuyau[1], STDOUT_FILENO);
    dup2(fileno(erreur_), STDERR_FILENO);
    close(tuyau[0]);
    close(tuyau[1]);
    signal(SIGINT, SIG_DFL);
    if (chdir(dossier.c_str()) != 0) _exit(126);
    if (baisser && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(125);
    execve(argv[0], argv.data(), envp.data());
    _exit(127);
  }
  close(tuyau[1]);
  sortie_ = tuyau[0];
  if (options.sortieFermee) {
    close(sortie_);
    sortie_ = -1;
  }
}

ProcessusQuillon::~ProcessusQuillon() {
  if (pid_ > 0) {
    kill(pid_, SIGKILL);
    Attendre();
  }
  if (erreur_ != nullptr) std::fclose(erreur_);
}

void ProcessusQuillon::Signaler(int signal) const { kill(pid_, signal); }

bool ProcessusQuillon::Lire() {
  char tampon[65536];
  pollfd attente{sortie_, POLLIN, 0};
  const ssize_t n = sortie_ < 0 || poll(&attente, 1, 120 * 1000) <= 0 ? -1 : read(sortie_, tampon, sizeof tampon);
  fin_ = n == 0;
  if (n > 0) lu_.append(tampon, static_cast<std::size_t>(n));
  return n > 0;
}

bool ProcessusQuillon::AttendreSortie(const std::string& texte) {
  while (lu_.find(texte) == std::string::npos) {
    if (!Lire()) return false;
  }
  return true;
}

ResultatExe ProcessusQuillon::Attendre() {
  ResultatExe r;
  while (Lire()) {}
  if (!fin_ && sortie_ >= 0) kill(pid_, SIGKILL);  // hung: the test fails on what it got
  if (sortie_ >= 0) close(sortie_);
  sortie_ = -1;
  int statut = 0;
  rusage usage{};
  wait4(pid_, &statut, 0, &usage);
  pid_ = -1;
  r.sortie = std::move(lu_);
  r.memoireMaxKo = usage.ru_maxrss;
  if (WIFEXITED(statut)) r.codeSortie = WEXITSTATUS(statut);
  if (WIFSIGNALED(statut)) r.signal = WTERMSIG(statut);
  r.erreur = LireFichier("/proc/self/fd/" + std::to_string(fileno(erreur_)));
  return r;
}

bool AttendreQue(const std::function<bool()>& condition) {
  const auto fin = std::chrono::steady_clock::now() + std::chrono::minutes(2);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > fin) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

ResultatExe LancerQuillon(const std::vector<std::string>& arguments, const std::string& dossier,
                          const OptionsExe& options) {
  return ProcessusQuillon(arguments, dossier, options).Attendre();
}

std::vector<std::string> Temporaires(const std::string& dossier) {
  std::vector<std::string> noms;
  std::error_code ec;
  for (const auto& e : fs::directory_iterator(dossier, ec)) {
    const std::string nom = e.path().filename().string();
    if (nom.find(".quillon-") != std::string::npos && nom.ends_with(".tmp")) noms.push_back(nom);
  }
  return noms;
}

uint32_t ProcessusTermine() {
  const pid_t pid = fork();
  if (pid == 0) _exit(0);
  waitpid(pid, nullptr, 0);
  return static_cast<uint32_t>(pid);
}

}  // namespace quillon::test
