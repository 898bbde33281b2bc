#include "app/batch/pool.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace quillon::lot {

std::vector<ResultatFichier> ConvertirLot(const std::vector<FichierLot>& fichiers, const OptionsLot& options,
                                          unsigned fils, const std::atomic<bool>& arret, const SuiviLot& suivi) {
  const std::size_t n = fichiers.size();
  std::vector<std::optional<ResultatFichier>> resultats(n);
  std::mutex verrou;
  std::condition_variable fait;
  std::atomic<std::size_t> suivant{0};
  unsigned actifs = 0;
  std::size_t faits = 0;  // files ended so far, in any order
  int64_t lignes = 0;     // the lines they read

  // Each worker takes the next file not taken yet; only the results are
  // handed over, under the lock.
  auto travailler = [&] {
    for (;;) {
      if (arret.load()) break;
      const std::size_t i = suivant.fetch_add(1);
      if (i >= n) break;
      ResultatFichier r = ConvertirFichier(fichiers[i], options, &arret);
      std::lock_guard<std::mutex> garde(verrou);
      ++faits;
      lignes += r.lues;
      resultats[i] = std::move(r);
      fait.notify_one();
    }
    std::lock_guard<std::mutex> garde(verrou);
    --actifs;
    fait.notify_one();
  };

  const unsigned nbFils = static_cast<unsigned>(std::min<std::size_t>(fils == 0 ? 1 : fils, n == 0 ? 1 : n));
  std::vector<std::thread> threads;
  actifs = nbFils;
  for (unsigned k = 0; k < nbFils; ++k) threads.emplace_back(travailler);

  std::size_t annonces = 0;  // results handed to fichierTermine so far
  std::unique_lock<std::mutex> garde(verrou);
  for (;;) {
    fait.wait_for(garde, suivi.periode, [&] { return actifs == 0 || (annonces < n && resultats[annonces]); });
    // Results in order, handed over outside the lock.
    std::vector<std::pair<std::size_t, ResultatFichier>> prets;
    while (annonces < n && resultats[annonces]) {
      prets.emplace_back(annonces, *resultats[annonces]);
      ++annonces;
    }
    const std::size_t faitsVus = faits;
    const int64_t lignesVues = lignes;
    const bool fini = actifs == 0;
    garde.unlock();
    for (const auto& [i, r] : prets) {
      if (suivi.fichierTermine) suivi.fichierTermine(i, r);
    }
    if (fini) break;
    if (suivi.avancement) suivi.avancement(faitsVus, lignesVues);
    garde.lock();
  }
  for (std::thread& t : threads) t.join();

  // What the stop left untouched.
  std::vector<ResultatFichier> tous(n);
  for (std::size_t i = 0; i < n; ++i) {
    if (resultats[i]) tous[i] = *resultats[i];
  }
  for (std::size_t i = annonces; i < n; ++i) {
    if (suivi.fichierTermine) suivi.fichierTermine(i, tous[i]);
  }
  return tous;
}

}  // namespace quillon::lot
