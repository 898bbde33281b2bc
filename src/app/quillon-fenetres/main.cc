// The windowed program: the main window and its dialogs. quillon starts it
// when it is given no argument.
#include "conversion/run_settings.h"
#include "io/interruptions.h"
#include "ui/windowed_mode.h"

int main(int argc, char** argv) {
  // A conversion cut short by a signal leaves no temporary file behind.
  quillon::InstallerInterruptions();
  quillon::ReglagesExecution reglages;
  quillon::InitialiserTables(reglages);
  return quillon::ModeFenetre(argc, argv, reglages);
}
