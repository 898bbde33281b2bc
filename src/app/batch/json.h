// The machine-readable report of a batch.
#pragma once

#include <string>
#include <vector>

#include "app/batch/totals.h"

namespace quillon::lot {

// One JSON object: the program, the mode, one object per file (paths,
// conversion, counts, outcome, message), the totals and the exit status.
// Texts are UTF-8; a file name that is not valid UTF-8 is read as
// Windows-1252.
std::string RapportJson(const std::vector<FichierLot>& fichiers, const std::vector<ResultatFichier>& resultats,
                        bool verification, int codeSortie);

}  // namespace quillon::lot
