// The checks that span lines, over what a watched run collected: points
// numbered twice, different points on the same spot, points far from the
// rest, lines that cannot be drawn, and the counts per theme and per field.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/extent.h"
#include "report/collect.h"

namespace quillon {

inline constexpr double kToleranceDefaut = 0.01;  // metres

// Line indices below; line index i is line number i + 1.
struct Doublon {
  uint32_t debut = 0, nombre = 0;  // its lines: MembresDoublons()[debut, debut + nombre)
  double dy = 0, dx = 0;           // largest difference between its lines
  std::optional<double> dh;        // the same over the lines with an altitude, when two have one
};

struct PointsProches {
  uint32_t a = 0, b = 0;  // a < b
  double distance = 0;
};

struct Etendue : Emprise {
  std::optional<double> altitudeMin, altitudeMax;
};

struct ParTheme {
  int theme = -1;  // -1: theme unreadable
  std::array<int64_t, 3> nombres{};  // by IssueLigne: converted, skipped, rejected
};

struct ParChamp {
  std::string champ;  // Windows-1252, as in the log
  int64_t lignes = 0;
  std::vector<uint32_t> premieres;  // the first kPremieresLignes line indices
};

struct Controles {
  double tolerance = kToleranceDefaut;
  std::vector<Doublon> doublons;
  std::vector<uint32_t> membresDoublons;
  std::vector<PointsProches> proches;  // at most kProchesMax, by first line
  // The search stopped early: kProchesMax pairs found, or so many points on
  // one spot that comparing them all would take too long.
  bool prochesTronques = false;
  std::vector<uint32_t> eloignes;
  std::vector<uint32_t> sansCoordonnees;
  std::optional<Etendue> etendue;      // of the converted points
  std::optional<Etendue> etendueDessin;  // of every line with coordinates
  std::vector<ParTheme> parTheme;      // by theme
  std::vector<ParChamp> parChamp;      // by first appearance
  std::array<int64_t, 3> nombres{};    // lines by outcome
};

inline constexpr std::size_t kProchesMax = 1'000'000;
inline constexpr std::size_t kPremieresLignes = 10;

// The checks fed line by line, as the lines are collected: everything but
// what needs all of them (the quartiles, the order of the results) is done
// by the time the last line is added. Ajouter may run on another thread than
// the collect's, over lines the collect has finished.
class Controleur {
 public:
  // `lignesAttendues`, the lines the source is thought to hold, sizes the
  // tables at once; more lines only make them grow.
  Controleur(const Collecte& collecte, double tolerance, std::size_t lignesAttendues = 0);
  ~Controleur();
  // The lines from the last one added up to `fin` (excluded).
  void Ajouter(std::size_t fin);
  // Once every line has been added; the controller is spent, and gives
  // its memory back when it goes.
  Controles Terminer();

 private:
  struct Etat;
  std::unique_ptr<Etat> e_;
};

// Every line of the collect at once.
Controles Controler(const Collecte& collecte, double tolerance);

// Rounded to a tenth of a millimetre, as the reports give distances.
double Arrondi(double metres);

// The first quartile, the median and the third quartile of v (not empty),
// whose values lie in [min, max]: each interpolated between the values of
// the two ranks around it.
std::array<double, 3> Quartiles(const std::vector<double>& v, double min, double max);

}  // namespace quillon
