#include "analysis/schur_cohn.h"

#include <cmath>

#include "wide.h"

namespace analysis {

bool schur_cohn_stable(const std::vector<double> &denominator) {
  std::vector<Extended> a(denominator.begin(), denominator.end());
  while (a.size() > 1) {
    const Extended k = a.back() / a.front();
    if (!(std::abs(k) < 1.0L)) return false;
    std::vector<Extended> lower;
    for (std::size_t i = 0; i + 1 < a.size(); ++i)
      lower.push_back((a[i] - k * a[a.size() - 1 - i]) / (1.0L - k * k));
    a = lower;
  }
  return true;
}

}  // namespace analysis
