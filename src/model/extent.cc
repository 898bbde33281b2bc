#include "model/extent.h"

#include <cmath>

namespace quillon {

double PasRond(double v) {
  if (!(v > 0) || !std::isfinite(v)) return 1;
  // v = r * 10^e with r in [1, 10): log10 may miss by one either way.
  int e = static_cast<int>(std::floor(std::log10(v)));
  auto mantisse = [&] { return e >= 0 ? v / std::pow(10.0, e) : v * std::pow(10.0, -e); };
  double r = mantisse();
  if (r >= 10) ++e, r = mantisse();
  if (r < 1) --e, r = mantisse();
  const double chiffre = r >= 5 ? 5 : r >= 2 ? 2 : 1;
  return e >= 0 ? chiffre * std::pow(10.0, e) : chiffre / std::pow(10.0, -e);
}

}  // namespace quillon
