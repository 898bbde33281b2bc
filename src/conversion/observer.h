// What a run tells whoever watches it line by line (the check report): each
// line once its step is done, and through the log each rejected field.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "io/journal.h"
#include "model/point.h"

namespace quillon {

enum class IssueLigne : uint8_t { Convertie, Ignoree, Rejetee };

struct LigneObservee {
  int64_t numero = 0;        // 1 for the first line of the source
  std::string_view texte;    // the source line as read
  std::string_view cible;    // the target line written, or empty
  const Point* point = nullptr;
  IssueLigne issue = IssueLigne::Convertie;
  // False when the line's Y or X could not be read: the point's Y and X
  // then hold nothing of this line.
  bool coordonnees = false;
};

class ObservateurExecution : public EcouteurJournal {
 public:
  // Called before the first line of a run.
  virtual void Debut() {}
  // Called after each line: its rejected fields have been heard already.
  virtual void Ligne(const LigneObservee& ligne) = 0;
};

// Several observers of one run (a check report and exports), each told
// everything in the order given.
class Observateurs : public ObservateurExecution {
 public:
  explicit Observateurs(std::vector<ObservateurExecution*> tous) : tous_(std::move(tous)) {}
  void Debut() override {
    for (ObservateurExecution* o : tous_) o->Debut();
  }
  void ChampRejete(bool lecture, std::initializer_list<std::string_view> message) override {
    for (ObservateurExecution* o : tous_) o->ChampRejete(lecture, message);
  }
  void Note(bool lecture, std::initializer_list<std::string_view> message) override {
    for (ObservateurExecution* o : tous_) o->Note(lecture, message);
  }
  void Ligne(const LigneObservee& ligne) override {
    for (ObservateurExecution* o : tous_) o->Ligne(ligne);
  }

 private:
  std::vector<ObservateurExecution*> tous_;
};

}  // namespace quillon
