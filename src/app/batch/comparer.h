// quillon-lot --comparer ANCIEN NOUVEAU: the two files compared, the
// differences on standard output, in JSON and in an HTML report.
#pragma once

#include "app/batch/options.h"

namespace quillon::lot {

// The exit status: 0 nothing differs, 1 something does, 2 a file could not
// be read or a report written, 64 a source that is no point file.
int ExecuterComparaison(const OptionsLot& options);

}  // namespace quillon::lot
