// What an interruption does: the platform's half is interruptions-posix.cc
// or interruptions-win32.cc.
#pragma once

#include <atomic>

namespace quillon {

// From now on SIGINT, SIGTERM and SIGHUP (Ctrl-C and closing the console on
// Windows) remove the pending temporary files, then end the program by the
// same signal, as shells expect. A closed standard output no longer ends
// the program (SIGPIPE ignored): its writes just fail.
//
// With `arret`, for a program that stops by itself between files: the first
// of these signals (on Windows, the first Ctrl-C or Ctrl-Break) only sets
// it; the next one ends the program as above. Closing the console, logging
// off and shutting down leave no time to stop and end it at once.
void InstallerInterruptions(std::atomic<bool>* arret = nullptr);

}  // namespace quillon
