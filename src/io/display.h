// Where a run shows its summary and its fatal errors: standard output in
// console mode, message boxes in windowed mode. Texts are Windows-1252.
#pragma once

#include <array>
#include <string>

namespace quillon {

class Affichage {
 public:
  virtual ~Affichage() = default;
  // The four summary lines of a completed run.
  virtual void MontrerBilan(const std::array<std::string, 4>& lignes) = 0;
  // A fatal error; the program ends after it.
  virtual void MontrerErreurFatale(const std::string& message) = 0;
};

}  // namespace quillon
