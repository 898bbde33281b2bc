// quillon_mesurer: runs one command and measures it.
//
//   quillon_mesurer RESULT_FILE COMMAND [ARGS...]
//
// Runs COMMAND with its standard streams inherited, waits for it, and
// writes one line into RESULT_FILE:
//   <wall seconds> <peak resident memory in KiB> <exit status> <CPU seconds>
// The peak and the CPU time (user and system) are the command's own
// (getrusage of that child), not those of every process the machine ran;
// on a busy machine the CPU time says more than the wall time. The exit status of quillon_mesurer is that
// of the command, or 127 when it could not be started.
#include <sys/resource.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("usage: quillon_mesurer RESULT_FILE COMMAND [ARGS...]\n", stderr);
    return 2;
  }
  const auto debut = std::chrono::steady_clock::now();
  const pid_t pid = ::fork();
  if (pid < 0) {
    std::perror("fork");
    return 127;
  }
  if (pid == 0) {
    ::execvp(argv[2], argv + 2);
    std::perror(argv[2]);
    ::_exit(127);
  }
  int etat = 0;
  struct rusage usage {};
  while (::wait4(pid, &etat, 0, &usage) < 0) {
  }
  const double secondes = std::chrono::duration<double>(std::chrono::steady_clock::now() - debut).count();
  const int code = WIFEXITED(etat) ? WEXITSTATUS(etat) : 128 + WTERMSIG(etat);

  std::FILE* resultat = std::fopen(argv[1], "w");
  if (resultat == nullptr) {
    std::perror(argv[1]);
    return 127;
  }
  const auto enSecondes = [](const timeval& t) { return static_cast<double>(t.tv_sec) + t.tv_usec / 1e6; };
  const double cpu = enSecondes(usage.ru_utime) + enSecondes(usage.ru_stime);
  std::fprintf(resultat, "%.6f %ld %d %.6f\n", secondes, usage.ru_maxrss, code, cpu);
  std::fclose(resultat);
  return code;
}
