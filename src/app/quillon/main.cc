// Quillon's entry point: with arguments, console mode converts one file;
// without, the main window opens (in the windowed program beside this one).
#include "app/quillon/command_line.h"
#include "app/quillon/console_display.h"
#include "app/quillon/console_mode.h"
#include "app/quillon/windowed_launch.h"
#include "conversion/run_settings.h"
#include "io/interruptions.h"

int main(int argc, char** argv) {
  const std::optional<std::string> arguments = quillon::TexteArgumentsProgramme(argc, argv);
  if (!arguments) return quillon::LancerModeFenetre(argv);

  // Ctrl-C and the like leave no temporary file behind; a closed standard
  // output does not stop a run halfway.
  quillon::InstallerInterruptions();
  quillon::ReglagesExecution reglages;
  quillon::InitialiserTables(reglages);
  quillon::AffichageConsole console;
  reglages.affichage = &console;
  quillon::ModeConsole(*arguments, reglages);
  return 0;
}
