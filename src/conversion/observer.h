// What a run tells whoever watches it line by line (the check report): each
// line once its step is done, and through the log each rejected field.
#pragma once

#include <cstdint>
#include <string_view>

#include "io/journal.h"
#include "model/point.h"

namespace quillon {

enum class IssueLigne : uint8_t { Convertie, Ignoree, Rejetee };

struct LigneObservee {
  int64_t numero = 0;        // 1 for the first line of the source
  std::string_view texte;    // the source line as read
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

}  // namespace quillon
