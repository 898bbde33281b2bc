#include "exe_runner.h"

#include <fcntl.h>
#include <poll.h>
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
  std::vector<std::string> env = {"PATH=/usr/bin:/bin", "LC_ALL=C"};
  for (const std::string& e : environnement) {
    const std::string cle = e.substr(0, e.find('=') + 1);
    bool remplace = false;
    for (std::string& existant : env) {
      if (existant.rfind(cle, 0) == 0) {
        existant = e;
        remplace = true;
      }
    }
    if (!remplace) env.push_back(e);
  }
  std::vector<char*> argv{const_cast<char*>(QUILLON_EXE)};
  for (const std::string& a : arguments) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  std::vector<char*> envp;
  for (std::string& e : env) envp.push_back(e.data());
  envp.push_back(nullptr);

  int sortie[2], erreurs[2];
  if (pipe(sortie) != 0 || pipe(erreurs) != 0) throw std::runtime_error("pipe");
  const pid_t pid = fork();
  if (pid == 0) {
    dup2(sortie[1], STDOUT_FILENO);
    dup2(erreurs[1], STDERR_FILENO);
    close(sortie[0]);
    close(erreurs[0]);
    if (chdir(dossier.c_str()) != 0) _exit(126);
    if (sansPrivileges && geteuid() == 0) {
      if (setgid(65534) != 0 || setuid(65534) != 0) _exit(125);
    }
    execve(argv[0], argv.data(), envp.data());
    _exit(127);
  }
  close(sortie[1]);
  close(erreurs[1]);
  ResultatExe r;
  pollfd fds[2] = {{sortie[0], POLLIN, 0}, {erreurs[0], POLLIN, 0}};
  int ouverts = 2;
  if (sortieFermee) {
    close(sortie[0]);
    fds[0].fd = -1;
    --ouverts;
  }
  char tampon[65536];
  while (ouverts > 0) {
    if (poll(fds, 2, -1) < 0) break;
    for (int i = 0; i < 2; ++i) {
      if (fds[i].fd < 0 || fds[i].revents == 0) continue;
      const ssize_t n = read(fds[i].fd, tampon, sizeof tampon);
      if (n <= 0) {
        close(fds[i].fd);
        fds[i].fd = -1;
        --ouverts;
      } else {
        (i == 0 ? r.sortie : r.erreurs).append(tampon, static_cast<std::size_t>(n));
      }
    }
  }
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
