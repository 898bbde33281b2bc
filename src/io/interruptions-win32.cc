// Interruptions on Windows: Ctrl-C, Ctrl-Break, closing the console window,
// logging off and shutting down remove the pending temporary files, then
// end the program as Ctrl-C does by default.
#include <windows.h>

#include "io/interruptions.h"
#include "io/temporary_files.h"

namespace quillon {
namespace {

std::atomic<bool>* drapeau = nullptr;

// Runs on a thread of its own, while the run may go on: the temporary files
// are open, but shared for deletion, and go when the program ends.
BOOL WINAPI Interrompre(DWORD evenement) {
  switch (evenement) {
    case CTRL_C_EVENT:
    case CTRL_BREAK_EVENT:
      if (drapeau != nullptr && !drapeau->exchange(true)) return TRUE;  // a request to stop
      [[fallthrough]];
    case CTRL_CLOSE_EVENT:
    case CTRL_LOGOFF_EVENT:
    case CTRL_SHUTDOWN_EVENT:
      SupprimerTemporaires();
      ::ExitProcess(STATUS_CONTROL_C_EXIT);
  }
  return FALSE;
}

}  // namespace

void InstallerInterruptions(std::atomic<bool>* arret) {
  drapeau = arret;
  ::SetConsoleCtrlHandler(Interrompre, TRUE);
}

}  // namespace quillon
