// Quillon's entry point: with arguments, console mode converts one file;
// without, the main window opens.
#include "app/command_line.h"
#include "app/console.h"
#include "app/console_mode.h"
#include "conversion/run_settings.h"

#ifdef QUILLON_AVEC_FENETRES
#include "ui/windowed_mode.h"
#else
#include <cstdio>
#endif

int main(int argc, char** argv) {
  quillon::ReglagesExecution reglages;
  quillon::InitialiserTables(reglages);

  // Any argument at all, even an empty one, selects console mode: the
  // system has already split the words, so the text is rebuilt from them.
  if (argc <= 1) {
#ifdef QUILLON_AVEC_FENETRES
    return quillon::ModeFenetre(argc, argv, reglages);
#else
    std::fputs("quillon: this build has no windowed mode; give a source and a target file\n", stderr);
    return 0;
#endif
  }

  quillon::AffichageConsole console;
  reglages.affichage = &console;
  quillon::ModeConsole(quillon::TexteArguments(argc, argv), reglages);
  return 0;
}
