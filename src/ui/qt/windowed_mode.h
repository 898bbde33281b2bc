// Windowed mode: the program started without arguments shows its main
// window and runs until the user quits. Nothing is written to standard
// output.
#pragma once

#include "conversion/run_settings.h"

namespace quillon {

// Sets the run settings' windowed mode, shows the main window and returns
// when the program ends. Where no display can be opened, says so in one line
// on standard error and returns nonzero.
int ModeFenetre(int argc, char** argv, ReglagesExecution& reglages);

}  // namespace quillon
