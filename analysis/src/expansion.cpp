#include "analysis/expansion.h"

#include <array>

#include "wide.h"

namespace analysis {
namespace {

using Polynomial = std::vector<Extended>;

Polynomial product(const Polynomial &p, const std::array<double, 3> &q) {
  Polynomial out(p.size() + 2, 0.0L);
  for (std::size_t i = 0; i < p.size(); ++i)
    for (std::size_t k = 0; k < q.size(); ++k) out[i + k] += p[i] * static_cast<Extended>(q[k]);
  return out;
}

std::vector<double> rounded(const Polynomial &p) {
  std::vector<double> list;
  for (const Extended value : p) list.push_back(static_cast<double>(value));
  return list;
}

}  // namespace

Transfer expanded(const Sections &filter) {
  Polynomial numerator{1.0L};
  Polynomial denominator{1.0L};
  for (const auto &[b0, b1, b2, a1, a2] : filter) {
    numerator = product(numerator, {b0, b1, b2});
    denominator = product(denominator, {1.0, a1, a2});
  }
  // A section of first order has nothing in its last places.
  while (denominator.size() > 1 && denominator.back() == 0.0L && numerator.back() == 0.0L) {
    denominator.pop_back();
    numerator.pop_back();
  }
  return {rounded(numerator), rounded(denominator)};
}

}  // namespace analysis
