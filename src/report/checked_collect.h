// A watched run's collect with its checks across lines going along on a
// second thread: each block of lines collected is handed to the checks
// while the run converts the next ones, so that once the run is over only
// what needs every line is left to do.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <thread>

#include "report/collect.h"
#include "report/checks.h"

namespace quillon {

class CollecteControlee : public ObservateurExecution {
 public:
  // `lignesAttendues`: as many lines as the source is thought to hold, or
  // 0 when nothing tells.
  explicit CollecteControlee(double tolerance, std::size_t lignesAttendues = 0)
      : tolerance_(tolerance), lignesAttendues_(lignesAttendues) {}
  ~CollecteControlee() override;

  void Debut() override;
  void Ligne(const LigneObservee& ligne) override;

  // Once the run is over: the checks of every line collected.
  Controles Terminer();
  const Collecte& Lignes() const { return collecte_; }

  static constexpr std::size_t kBloc = 4096;  // lines handed over at once

 private:
  void Travailler();
  void Arreter();

  double tolerance_;
  std::size_t lignesAttendues_;
  Collecte collecte_;
  std::unique_ptr<Controleur> controleur_;
  std::thread fil_;
  std::mutex verrou_;
  std::condition_variable signal_;
  std::size_t publiees_ = 0;  // lines the checks may take
  bool fin_ = false;          // no more will come
};

}  // namespace quillon
