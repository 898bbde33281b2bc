// Windowed mode: the program shows its main window and runs until the user
// quits; files and folders named as its arguments are taken as a drop on the
// window once it shows. Nothing is written to standard
// output. Each front end has its own: Qt's (qt/windowed_mode.cc), Win32's
// (win32/windowed_mode.cc).
#pragma once

#include "conversion/run_settings.h"

namespace quillon {

// Sets the run settings' windowed mode, shows the main window and returns
// when the program ends. Where no display can be opened, says so in one line
// on standard error and returns nonzero.
int ModeFenetre(int argc, char** argv, ReglagesExecution& reglages);

}  // namespace quillon
