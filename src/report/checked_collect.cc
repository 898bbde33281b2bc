#include "report/checked_collect.h"

namespace quillon {

CollecteControlee::~CollecteControlee() { Arreter(); }

void CollecteControlee::Arreter() {
  if (!fil_.joinable()) return;
  {
    const std::lock_guard<std::mutex> garde(verrou_);
    fin_ = true;
  }
  signal_.notify_one();
  fil_.join();
}

void CollecteControlee::Debut() {
  Arreter();
  collecte_.Debut();
  publiees_ = 0;
  fin_ = false;
  fil_ = std::thread([this] { Travailler(); });
}

void CollecteControlee::Ligne(const LigneObservee& ligne) {
  collecte_.Ligne(ligne);
  const std::size_t n = collecte_.Lignes().size();
  if (n % kBloc != 0) return;
  {
    const std::lock_guard<std::mutex> garde(verrou_);
    publiees_ = n;
  }
  signal_.notify_one();
}

// The checks' thread: the lines published, block after block, until the
// last one. The lock orders each block's records before their reading.
void CollecteControlee::Travailler() {
  // Made here: its tables are filled with zeros while the run starts.
  controleur_ = std::make_unique<Controleur>(collecte_, tolerance_, lignesAttendues_);
  std::size_t faites = 0;
  std::unique_lock<std::mutex> verrou(verrou_);
  for (;;) {
    signal_.wait(verrou, [&] { return publiees_ > faites || fin_; });
    const std::size_t jusqua = publiees_;
    const bool fin = fin_;
    verrou.unlock();
    controleur_->Ajouter(jusqua);
    faites = jusqua;
    collecte_.PreparerBlocs(faites);
    verrou.lock();
    if (fin && faites == publiees_) return;
  }
}

Controles CollecteControlee::Terminer() {
  if (!fil_.joinable()) Debut();  // a run that never started: no line
  {
    const std::lock_guard<std::mutex> garde(verrou_);
    publiees_ = collecte_.Lignes().size();
  }
  Arreter();
  return controleur_->Terminer();
}

}  // namespace quillon
