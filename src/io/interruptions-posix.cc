// Interruptions on POSIX: SIGINT, SIGTERM and SIGHUP remove the pending
// temporary files, then end the program by the same signal (or, the first
// time, ask it to stop); SIGPIPE is ignored.
#include <signal.h>
#include <unistd.h>

#include "io/interruptions.h"
#include "io/temporary_files.h"

namespace quillon {

namespace {

std::atomic<bool>* drapeau = nullptr;

void Interrompre(int signal) {
  if (drapeau != nullptr && !drapeau->exchange(true)) return;  // a request to stop
  SupprimerTemporaires();
  // Back to the default action, which the signal, blocked while this
  // handler runs, takes as soon as it returns.
  ::signal(signal, SIG_DFL);
  ::raise(signal);
}

}  // namespace

void InstallerInterruptions(std::atomic<bool>* arret) {
  drapeau = arret;
  // A closed standard output must not stop a run halfway: its writes just
  // fail, unnoticed.
  ::signal(SIGPIPE, SIG_IGN);
  struct sigaction action {};
  action.sa_handler = Interrompre;
  sigemptyset(&action.sa_mask);
  for (int s : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&action.sa_mask, s);
  for (int s : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction avant {};
    // A signal ignored when the program started (a background job's SIGINT)
    // stays ignored.
    if (::sigaction(s, nullptr, &avant) == 0 && avant.sa_handler == SIG_IGN) continue;
    ::sigaction(s, &action, nullptr);
  }
}

}  // namespace quillon
