// Where a run shows its summary and its fatal errors: standard output in
// console mode, message boxes in windowed mode, the report in a batch.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>

namespace quillon {

enum class RaisonFatale { Ouverture, Creation, Lecture, Ecriture };

// A completed run's four counts, as its summary gives them: lines read,
// lines skipped, reading errors, writing errors.
struct ComptesBilan {
  int64_t lues = 0, ignorees = 0, lecture = 0, ecriture = 0;
};

// A fatal error: the file, its path as the program holds it, and what could
// not be done with it; and, when a library said why, its words
// (Windows-1252). Each front end words it.
struct ErreurFatale {
  ErreurFatale() = default;
  ErreurFatale(std::string f, RaisonFatale r, std::string d = {})
      : fichier(std::move(f)), raison(r), detail(std::move(d)) {}

  std::string fichier;
  RaisonFatale raison = RaisonFatale::Ouverture;
  std::string detail;
};

// "Le fichier <nom> ne peut pas être ouvert" and its siblings for "créé",
// "lu" and "écrit", the name as the log shows it, followed by the detail
// in parentheses when there is one; Windows-1252.
std::string CauseFatale(const ErreurFatale& erreur);
// The cause followed by ", l'application va s'arrêter": what the console
// and the windows show, since the program ends after it.
std::string MessageFatal(const ErreurFatale& erreur);

// The same in the chosen language, UTF-8, for the windows and the reports:
// the cause, and a summary's four lines.
std::string CauseTraduite(const ErreurFatale& erreur);
std::array<std::string, 4> LignesBilan(const ComptesBilan& comptes);

class Affichage {
 public:
  virtual ~Affichage() = default;
  // A completed run's summary: each front end words it (the console as the
  // log does, the windows in the user's language).
  virtual void MontrerBilan(const ComptesBilan& comptes) = 0;
  // A fatal error; the run has ended with it.
  virtual void MontrerErreurFatale(const ErreurFatale& erreur) = 0;
};

}  // namespace quillon
