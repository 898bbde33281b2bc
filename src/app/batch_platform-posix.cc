// quillon-lot on POSIX: the words as the system split them, file names as
// bytes, signals.
#include <signal.h>
#include <unistd.h>

#include "app/batch_platform.h"
#include "io/temporary_files.h"

namespace quillon::lot {
namespace {

std::atomic<bool>* drapeau = nullptr;

// The first signal asks the batch to stop; the next one ends the program
// by the same signal, its pending temporary files removed.
void Interrompre(int signal) {
  if (drapeau != nullptr && !drapeau->exchange(true)) return;
  SupprimerTemporaires();
  ::signal(signal, SIG_DFL);
  ::raise(signal);
}

}  // namespace

std::vector<std::string> MotsProgramme(int argc, char** argv) {
  return std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc);
}

std::filesystem::path CheminNatif(const std::string& texte) { return std::filesystem::path(texte); }

std::string TexteChemin(const std::filesystem::path& chemin) { return chemin.native(); }

bool ErreurEstTerminal() { return ::isatty(STDERR_FILENO) == 1; }

void InstallerArret(std::atomic<bool>& arret) {
  drapeau = &arret;
  ::signal(SIGPIPE, SIG_IGN);
  struct sigaction action {};
  action.sa_handler = Interrompre;
  sigemptyset(&action.sa_mask);
  for (int s : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&action.sa_mask, s);
  for (int s : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction avant {};
    // A signal ignored when the program started stays ignored.
    if (::sigaction(s, nullptr, &avant) == 0 && avant.sa_handler == SIG_IGN) continue;
    ::sigaction(s, &action, nullptr);
  }
}

void EcrireSortieBrute(std::string_view octets) {
  while (!octets.empty()) {
    const ssize_t n = ::write(STDOUT_FILENO, octets.data(), octets.size());
    if (n <= 0) return;
    octets.remove_prefix(static_cast<std::size_t>(n));
  }
}

std::string_view FinLigne() { return "\n"; }

}  // namespace quillon::lot
