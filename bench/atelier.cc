// The main window's workbench without a toolkit, timed: what the window
// does between a drop and the picture, with the views' part left out.
//
//   quillon_bench_atelier lot DOSSIER   a folder dropped and checked: the
//                                       batch's wall time
//   quillon_bench_atelier carte FICHIER one large file dropped: its run, the
//                                       time from the run's end to its
//                                       picture, and the slowest redraw
//                                       after a zoom or a pan, at the
//                                       overview and at full zoom
//
// The batch dialog answers Contrôler with its first choices (check only,
// scale 1:250, CS, subfolders). Prints "name seconds" lines.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>

#include "ui/workbench.h"
#include "window_fakes.h"

namespace quillon {
namespace {

using Horloge = std::chrono::steady_clock;

double Secondes(Horloge::time_point depuis) {
  return std::chrono::duration<double>(Horloge::now() - depuis).count();
}

struct VueBanc : VueAtelier {
  Parent Fenetre() override { return this; }
  bool MontrerDialogueLot(LogiqueDialogueLot&) override { return true; }
  void Rafraichir(unsigned) override {}
  void Reveiller() override {}
};

struct Banc : test::FauxServices {
  AffichageFenetre affichage{boites};
  ReglagesExecution reglages;
  VueBanc vue;
  Atelier atelier{reglages, services, vue};
  Banc() {
    InitialiserTables(reglages);
    reglages.affichage = &affichage;
  }
  // Takes the threads' news every millisecond until `fini` holds.
  template <typename Condition>
  void Attendre(Condition fini) {
    while (!fini()) {
      atelier.TraiterEvenements();
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }
  bool Lu() const {
    return !atelier.RangChoisi() || atelier.Montre() != nullptr ||
           (!atelier.MessageFichier().empty() && !atelier.MessageFichier().starts_with("Lecture"));
  }
};

int Lot(const std::string& dossier) {
  Banc b;
  const auto debut = Horloge::now();
  b.atelier.Deposer({dossier});
  b.Attendre([&] { return !b.atelier.EtatAvancement().enCours && b.atelier.Table().Taille() > 0; });
  std::printf("lot %.3f\n", Secondes(debut));
  return b.atelier.Table().Taille() > 0 ? 0 : 1;
}

// The slowest of a few redraws, each after one move of the view.
template <typename Mouvement>
double PireDessin(Banc& b, Mouvement bouger) {
  double pire = 0;
  for (int k = 0; k < 8; ++k) {
    bouger(k);
    const auto debut = Horloge::now();
    const Dessin d = b.atelier.Dessiner();
    pire = std::max(pire, Secondes(debut));
    if (d.pixels.empty()) return -1;
  }
  return pire;
}

int Carte(const std::string& fichier) {
  Banc b;
  b.atelier.Carte_Taille(1200, 800);
  const auto debut = Horloge::now();
  b.atelier.Deposer({fichier});
  b.Attendre([&] { return !b.atelier.EtatAvancement().enCours && b.atelier.Table().Taille() > 0; });
  const auto fin = Horloge::now();
  std::printf("execution %.3f\n", Secondes(debut));
  // A file without problems is not selected at the run's end: the user's
  // click on its row.
  if (!b.atelier.RangChoisi()) b.atelier.Table_Clic(0);
  b.Attendre([&] { return b.Lu(); });
  if (b.atelier.Montre() == nullptr) {
    std::fprintf(stderr, "quillon_bench_atelier: %s not shown: %s\n", fichier.c_str(),
                 b.atelier.MessageFichier().c_str());
    return 1;
  }
  const Dessin premier = b.atelier.Dessiner();
  std::printf("image %.3f\n", Secondes(fin));
  const double ensemble = PireDessin(b, [&](int k) {
    b.atelier.Carte_Molette(k % 2 ? -120 : 120, 600, 400);
  });
  for (int k = 0; k < 60; ++k) b.atelier.Carte_Molette(120, 600, 400);
  const double zoom = PireDessin(b, [&](int k) { b.atelier.Carte_Glisser(k % 2 ? -40 : 40, 25); });
  std::printf("redessin_ensemble %.3f\nredessin_zoom %.3f\n", ensemble, zoom);
  return premier.pixels.empty() || ensemble < 0 || zoom < 0 ? 1 : 0;
}

}  // namespace
}  // namespace quillon

int main(int argc, char** argv) {
  if (argc == 3 && std::strcmp(argv[1], "lot") == 0) return quillon::Lot(argv[2]);
  if (argc == 3 && std::strcmp(argv[1], "carte") == 0) return quillon::Carte(argv[2]);
  std::fputs("usage: quillon_bench_atelier lot DOSSIER | carte FICHIER\n", stderr);
  return 2;
}
