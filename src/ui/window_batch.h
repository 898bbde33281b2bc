// A batch run from the main window: the same engine as quillon-lot, with
// the same files written, on a thread of its own so that the window stays
// alive. What the run tells (each file's result, the progress, its end)
// waits in a queue; the thread wakes the window, whose own thread takes it.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "app/batch/run.h"
#include "app/batch/sources.h"

namespace quillon {

class LotFenetre {
 public:
  // `reveiller` is called from the batch's thread whenever something waits
  // in the queue: it must only ask the window's thread to call Prendre.
  explicit LotFenetre(std::function<void()> reveiller) : reveiller_(std::move(reveiller)) {}
  // Stops a batch under way and waits for it.
  ~LotFenetre();

  // Starts the files; false when a batch is under way.
  bool Demarrer(std::vector<lot::FichierLot> fichiers, lot::OptionsLot options, unsigned fils);
  // Stops as Ctrl-C stops quillon-lot: no file is started any more, the
  // files under way keep their previous target and log, the others come as
  // not run.
  void Annuler() { arret_ = true; }
  bool EnCours() const { return enCours_; }
  // Waits for the batch's thread to end (after Annuler, or at its end).
  void Attendre();

  struct Evenement {
    enum class Sorte { Fichier, Avancement, Fin } sorte = Sorte::Avancement;
    std::size_t index = 0;  // Fichier: the file's index in the batch
    lot::ResultatFichier resultat;
    std::size_t faits = 0;  // Avancement: files done, lines they read
    int64_t lignes = 0;
  };
  // What happened since the last call, in order; the window's thread.
  std::vector<Evenement> Prendre();

  std::size_t Total() const { return total_; }
  double Secondes() const;

 private:
  void Poster(Evenement e);

  std::function<void()> reveiller_;
  std::thread fil_;
  std::atomic<bool> arret_{false};
  std::atomic<bool> enCours_{false};
  std::mutex verrou_;
  std::vector<Evenement> attente_;
  std::size_t total_ = 0;
  std::chrono::steady_clock::time_point debut_;
};

}  // namespace quillon
