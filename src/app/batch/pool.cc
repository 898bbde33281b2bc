#include "app/batch/pool.h"

#include <chrono>
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
  std::condition_variable fait, aPlacer, place;
  std::atomic<std::size_t> suivant{0};
  unsigned actifs = 0;
  std::size_t faits = 0;  // files ended so far, in any order
  int64_t lignes = 0;     // the lines they read

  // A converted file waits for its files to be put in place, by groups.
  struct Attente {
    std::size_t i;
    ResultatFichier r;
    std::vector<std::unique_ptr<PlacementDifere>> placements;
  };
  std::vector<Attente> attentes;
  bool convertisseurs = true;  // some worker may still hand files over
  bool placeurActif = false;   // a group taken, its results not yet given
  constexpr std::size_t kAttentesMax = 64;

  // Each worker takes the next file not taken yet and converts it, its
  // files closed beside their names; it hands them over, under the lock,
  // and goes on with the next file while they wait to be put in place.
  auto travailler = [&] {
    DifererPlacements(true);
    for (;;) {
      if (arret.load()) break;
      const std::size_t i = suivant.fetch_add(1);
      if (i >= n) break;
      ResultatFichier r = ConvertirFichier(fichiers[i], options, &arret);
      std::vector<std::unique_ptr<PlacementDifere>> placements = PlacementsDiferes();
      std::unique_lock<std::mutex> garde(verrou);
      place.wait(garde, [&] { return attentes.size() < kAttentesMax; });
      attentes.push_back({i, std::move(r), std::move(placements)});
      aPlacer.notify_one();
    }
    std::lock_guard<std::mutex> garde(verrou);
    if (--actifs == 0) convertisseurs = false;
    aPlacer.notify_one();
  };

  // The files waiting are put in place together: one sync of them all,
  // then each renamed; a file whose files cannot all be placed fails. A
  // group waits a little for company, not a file alone for each sync.
  auto placer = [&] {
    std::unique_lock<std::mutex> garde(verrou);
    for (;;) {
      aPlacer.wait(garde, [&] { return !attentes.empty() || !convertisseurs; });
      if (attentes.empty()) break;
      aPlacer.wait_for(garde, std::chrono::milliseconds(5), [&] { return attentes.size() >= 16 || !convertisseurs; });
      std::vector<Attente> groupe;
      groupe.swap(attentes);
      placeurActif = true;
      place.notify_all();
      garde.unlock();
      std::vector<std::unique_ptr<PlacementDifere>> tous;
      for (Attente& a : groupe) {
        for (auto& p : a.placements) tous.push_back(std::move(p));
      }
      const std::vector<bool> places = PlacerGroupe(tous);
      std::size_t k = 0;
      for (Attente& a : groupe) {
        for (std::size_t fin = k + a.placements.size(); k < fin; ++k) {
          if (places[k] || a.r.issue == Issue::Echec) continue;
          a.r.issue = Issue::Echec;
          a.r.echec = Echec{Echec::Raison::Run, {tous[k]->Nom(), RaisonFatale::Ecriture}, {}};
        }
      }
      tous.clear();  // what could not be placed is removed
      garde.lock();
      for (Attente& a : groupe) {
        ++faits;
        lignes += a.r.lues;
        resultats[a.i] = std::move(a.r);
      }
      placeurActif = false;
      fait.notify_one();
    }
    fait.notify_one();
  };

  const unsigned nbFils = static_cast<unsigned>(std::min<std::size_t>(fils == 0 ? 1 : fils, n == 0 ? 1 : n));
  std::vector<std::thread> threads;
  actifs = nbFils;
  for (unsigned k = 0; k < nbFils; ++k) threads.emplace_back(travailler);
  std::thread placeur(placer);

  std::size_t annonces = 0;  // results handed to fichierTermine so far
  std::unique_lock<std::mutex> garde(verrou);
  for (;;) {
    const auto finis = [&] { return !convertisseurs && attentes.empty() && !placeurActif; };
    fait.wait_for(garde, suivi.periode, [&] { return finis() || (annonces < n && resultats[annonces]); });
    // Results in order, handed over outside the lock.
    std::vector<std::pair<std::size_t, ResultatFichier>> prets;
    while (annonces < n && resultats[annonces]) {
      prets.emplace_back(annonces, *resultats[annonces]);
      ++annonces;
    }
    const std::size_t faitsVus = faits;
    const int64_t lignesVues = lignes;
    const bool fini = finis();
    garde.unlock();
    for (const auto& [i, r] : prets) {
      if (suivi.fichierTermine) suivi.fichierTermine(i, r);
    }
    if (fini) break;
    if (suivi.avancement) suivi.avancement(faitsVus, lignesVues);
    garde.lock();
  }
  for (std::thread& t : threads) t.join();
  placeur.join();

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
