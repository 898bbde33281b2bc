// The files of a batch converted on several threads.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <vector>

#include "app/batch/run.h"

namespace quillon::lot {

struct SuiviLot {
  // Called on the calling thread with each file's result in the order of
  // the files, as soon as it and every file before it are done.
  std::function<void(std::size_t index, const ResultatFichier&)> fichierTermine;
  // Called on the calling thread every `periode` while files are under way:
  // files done, lines read in the files done.
  std::function<void(std::size_t faits, int64_t lignes)> avancement;
  std::chrono::milliseconds periode{250};
};

// Converts the files on `fils` threads, each file on one thread with
// settings of its own. Once `arret` is true no file is started any more;
// those never started come out as NonTraite. Returns every file's result.
std::vector<ResultatFichier> ConvertirLot(const std::vector<FichierLot>& fichiers, const OptionsLot& options,
                                          unsigned fils, const std::atomic<bool>& arret, const SuiviLot& suivi);

}  // namespace quillon::lot
