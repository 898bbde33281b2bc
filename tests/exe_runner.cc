#include "exe_runner.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace fs = std::filesystem;

namespace quillon::test {
namespace {

// The program as "nobody" can run it: the build folder may sit where only
// root may go (root's home folder), so a copy in a folder of the system's
// temporary folder, open to all, made once per test program.
const std::string& ProgrammeSansPrivileges() {
  static const DossierTemporaire dossier;
  static const std::string copie = [] {
    const std::string chemin = dossier / "quillon";
    fs::copy_file(QUILLON_EXE, chemin);
    chmod(dossier.chemin().c_str(), 0755);
    chmod(chemin.c_str(), 0755);
    return chemin;
  }();
  return copie;
}

const char* Variable(const char* nom, const char* defaut = nullptr) {
  const char* valeur = std::getenv(nom);
  return valeur != nullptr && *valeur != '\0' ? valeur : defaut;
}

// Under wine: the launcher, and what wine needs of the environment.
void PreparerWindows(const std::vector<std::string>& arguments, const OptionsExe& options,
                     std::vector<std::string>& argv, std::vector<std::string>& env) {
  std::string texte;
  for (std::size_t i = 0; i < arguments.size(); ++i) texte += (i > 0 ? " " : "") + arguments[i];
  const std::string ligne = options.ligneCommande.empty()
                                ? LigneCommandeWindows(Variable("QUILLON_EXE_WINDOWS"), texte)
                                : options.ligneCommande;
  argv = {Variable("QUILLON_WINE", "/usr/bin/wine"), Variable("QUILLON_LANCEUR", "quillon_lanceur.exe")};
  env.push_back("QUILLON_LIGNE_COMMANDE=" + ligne);
  AjouterEnvironnementWine(env);
}

}  // namespace

void AjouterEnvironnementWine(std::vector<std::string>& env) {
  for (const char* nom : {"HOME", "WINEPREFIX", "WINEDEBUG", "WINESERVER", "WINEARCH"}) {
    if (const char* valeur = Variable(nom)) env.push_back(std::string(nom) + "=" + valeur);
  }
}

pid_t Demarrer(std::vector<std::string> mots, std::vector<std::string> env, const std::string& dossier,
               int& sortie, const std::function<bool()>& enfant) {
  std::vector<char*> argv;
  for (std::string& m : mots) argv.push_back(m.data());
  argv.push_back(nullptr);
  std::vector<char*> envp;
  for (std::string& e : env) envp.push_back(e.data());
  envp.push_back(nullptr);

  int tuyau[2];
  if (pipe(tuyau) != 0) throw std::runtime_error("pipe");
  const pid_t pid = fork();
  if (pid == 0) {
    dup2(tuyau[1], STDOUT_FILENO);
    close(tuyau[0]);
    close(tuyau[1]);
    if (chdir(dossier.c_str()) != 0) _exit(126);
    if (enfant && !enfant()) _exit(125);
    execve(argv[0], argv.data(), envp.data());
    _exit(127);
  }
  close(tuyau[1]);
  sortie = tuyau[0];
  return pid;
}

bool SousWindows() { return Variable("QUILLON_EXE_WINDOWS") != nullptr; }

std::string LigneCommandeWindows(const std::string& programme, const std::string& texte) {
  std::string chemin = "Z:" + fs::absolute(programme).string();
  for (char& c : chemin) {
    if (c == '/') c = '\\';
  }
  return "\"" + chemin + "\" " + texte;
}

ProcessusQuillon::ProcessusQuillon(const std::vector<std::string>& arguments, const std::string& dossier,
                                   const OptionsExe& options) {
  const bool baisser = options.sansPrivileges && geteuid() == 0;
  // The case's own settings, and the defaults it does not set.
  std::vector<std::string> env = options.environnement;
  for (const std::string defaut : {"PATH=/usr/bin:/bin", "LC_ALL=C"}) {
    const std::string cle = defaut.substr(0, defaut.find('=') + 1);
    if (std::none_of(env.begin(), env.end(), [&](const std::string& e) { return e.starts_with(cle); })) {
      env.push_back(defaut);
    }
  }
  std::vector<std::string> mots;
  if (SousWindows()) {
    PreparerWindows(arguments, options, mots, env);
  } else {
    mots = {baisser ? ProgrammeSansPrivileges() : std::string(QUILLON_EXE)};
    mots.insert(mots.end(), arguments.begin(), arguments.end());
  }
  pid_ = Demarrer(std::move(mots), std::move(env), dossier, sortie_,
                  [baisser] { return !baisser || (setgid(65534) == 0 && setuid(65534) == 0); });
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
}

void ProcessusQuillon::Signaler(int signal) const { kill(pid_, signal); }

ResultatExe ProcessusQuillon::Attendre() {
  ResultatExe r;
  char tampon[65536];
  for (ssize_t n; sortie_ >= 0 && (n = read(sortie_, tampon, sizeof tampon)) > 0;) r.sortie.append(tampon, n);
  if (sortie_ >= 0) close(sortie_);
  sortie_ = -1;
  int statut = 0;
  rusage usage{};
  wait4(pid_, &statut, 0, &usage);
  pid_ = -1;
  r.memoireMaxKo = usage.ru_maxrss;
  if (WIFEXITED(statut)) r.codeSortie = WEXITSTATUS(statut);
  if (WIFSIGNALED(statut)) r.signal = WTERMSIG(statut);
  return r;
}

ResultatExe LancerQuillon(const std::vector<std::string>& arguments, const std::string& dossier,
                          const OptionsExe& options) {
  return ProcessusQuillon(arguments, dossier, options).Attendre();
}

std::string LireFichier(const std::string& chemin) {
  std::ifstream f(chemin, std::ios::binary);
  std::ostringstream s;
  s << f.rdbuf();
  return s.str();
}

void EcrireFichier(const std::string& chemin, const std::string& contenu) {
  std::ofstream f(chemin, std::ios::binary | std::ios::trunc);
  f << contenu;
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

DossierTemporaire::DossierTemporaire() {
  std::string modele = (fs::temp_directory_path() / "quillon-test.XXXXXX").string();
  if (mkdtemp(modele.data()) == nullptr) throw std::runtime_error("mkdtemp");
  chemin_ = modele;
  chmod(chemin_.c_str(), 0777);  // a run without privileges writes here too
}

DossierTemporaire::~DossierTemporaire() {
  std::error_code ec;
  fs::permissions(chemin_, fs::perms::all, ec);
  for (const auto& e : fs::recursive_directory_iterator(chemin_, ec)) {
    fs::permissions(e.path(), fs::perms::owner_all, ec);
  }
  fs::remove_all(chemin_, ec);
}

}  // namespace quillon::test
