// Console mode's way of showing a run's summary and fatal errors: standard
// output.
#pragma once

#include <array>
#include <string>

#include "io/display.h"

namespace quillon {

class AffichageConsole : public Affichage {
 public:
  void MontrerBilan(const ComptesBilan& comptes) override;
  void MontrerErreurFatale(const ErreurFatale& erreur) override;
};

}  // namespace quillon
