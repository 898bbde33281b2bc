#include "exe_runner.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace quillon::test {

ResultatExe LancerQuillon(const std::vector<std::string>& arguments, const std::string& dossier,
                          const std::vector<std::string>& environnement, bool sansPrivileges,
                          bool sortieFermee) {
  // The case's own settings first: the first of two LC_ALL is the one seen.
  std::vector<std::string> env = environnement;
  env.insert(env.end(), {"PATH=/usr/bin:/bin", "LC_ALL=C"});
  std::vector<char*> argv{const_cast<char*>(QUILLON_EXE)};
  for (const std::string& a : arguments) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  std::vector<char*> envp;
  for (std::string& e : env) envp.push_back(e.data());
  envp.push_back(nullptr);

  int sortie[2];
  if (pipe(sortie) != 0) throw std::runtime_error("pipe");
  const pid_t pid = fork();
  if (pid == 0) {
    dup2(sortie[1], STDOUT_FILENO);
    close(sortie[0]);
    if (chdir(dossier.c_str()) != 0) _exit(126);
    if (sansPrivileges && geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(125);
    execve(argv[0], argv.data(), envp.data());
    _exit(127);
  }
  close(sortie[1]);
  ResultatExe r;
  if (sortieFermee) close(sortie[0]);
  char tampon[65536];
  for (ssize_t n; !sortieFermee && (n = read(sortie[0], tampon, sizeof tampon)) > 0;) r.sortie.append(tampon, n);
  if (!sortieFermee) close(sortie[0]);
  int statut = 0;
  rusage usage{};
  wait4(pid, &statut, 0, &usage);
  r.memoireMaxKo = usage.ru_maxrss;
  if (WIFEXITED(statut)) r.codeSortie = WEXITSTATUS(statut);
  if (WIFSIGNALED(statut)) r.signal = WTERMSIG(statut);
  return r;
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

DossierTemporaire::DossierTemporaire() {
  std::string modele = (std::filesystem::temp_directory_path() / "quillon-test.XXXXXX").string();
  if (mkdtemp(modele.data()) == nullptr) throw std::runtime_error("mkdtemp");
  chemin_ = modele;
  chmod(chemin_.c_str(), 0777);  // a run without privileges writes here too
}

DossierTemporaire::~DossierTemporaire() {
  std::error_code ec;
  std::filesystem::permissions(chemin_, std::filesystem::perms::all, ec);
  for (const auto& e : std::filesystem::recursive_directory_iterator(chemin_, ec)) {
    std::filesystem::permissions(e.path(), std::filesystem::perms::owner_all, ec);
  }
  std::filesystem::remove_all(chemin_, ec);
}

}  // namespace quillon::test
