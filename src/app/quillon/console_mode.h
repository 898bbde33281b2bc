// Console mode: the version line, the arguments, and the conversions that
// the file extensions call for.
#pragma once

#include <string_view>

#include "conversion/run_settings.h"
#include "version.h"

namespace quillon {

void AfficherVersion();

// Runs console mode on the argument text; the run settings are those of the
// process (their display and file service already set).
void ModeConsole(std::string_view texteArguments, ReglagesExecution& reglages);

}  // namespace quillon
