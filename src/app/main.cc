// Quillon's entry point: with arguments, console mode converts one file;
// without, the main window opens (in the windowed program beside this one).
#include <csignal>

#include "app/command_line.h"
#include "app/console.h"
#include "app/console_mode.h"
#include "app/windowed_launch.h"
#include "conversion/run_settings.h"
#include "io/temporary_files.h"

int main(int argc, char** argv) {
  // Any argument at all, even an empty one, selects console mode: the
  // system has already split the words, so the text is rebuilt from them.
  if (argc <= 1) return quillon::LancerModeFenetre(argv);

#ifdef SIGPIPE
  // A closed standard output must not stop a run halfway: its writes just
  // fail, unnoticed.
  std::signal(SIGPIPE, SIG_IGN);
#endif
  // Ctrl-C and the like leave no temporary file behind.
  quillon::InstallerInterruptions();
  quillon::ReglagesExecution reglages;
  quillon::InitialiserTables(reglages);
  quillon::AffichageConsole console;
  reglages.affichage = &console;
  quillon::ModeConsole(quillon::TexteArguments(argc, argv), reglages);
  return 0;
}
