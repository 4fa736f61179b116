#include "lists.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace layouts {
namespace {

using Polynomial = std::vector<long double>;

Polynomial product(const Polynomial &p, const std::array<double, 3> &q) {
  Polynomial out(p.size() + 2, 0.0L);
  for (std::size_t i = 0; i < p.size(); ++i)
    for (std::size_t k = 0; k < q.size(); ++k) out[i + k] += p[i] * static_cast<long double>(q[k]);
  return out;
}

std::vector<double> rounded(const Polynomial &p) {
  std::vector<double> list;
  for (const long double value : p) list.push_back(static_cast<double>(value));
  return list;
}

}  // namespace

analysis::Transfer expanded(const analysis::Sections &sections) {
  Polynomial numerator{1.0L};
  Polynomial denominator{1.0L};
  for (const analysis::Section &s : sections) {
    numerator = product(numerator, {s.b0, s.b1, s.b2});
    denominator = product(denominator, {1.0, s.a1, s.a2});
  }
  // A section of first order has nothing in its last places.
  while (denominator.size() > 1 && denominator.back() == 0.0L && numerator.back() == 0.0L) {
    denominator.pop_back();
    numerator.pop_back();
  }
  return {rounded(numerator), rounded(denominator)};
}

bool is_stable(const analysis::Transfer &lists) {
  Polynomial a(lists.denominator.begin(), lists.denominator.end());
  while (a.size() > 1) {
    const long double k = a.back() / a.front();
    if (!(std::abs(k) < 1.0L)) return false;
    Polynomial lower;
    for (std::size_t i = 0; i + 1 < a.size(); ++i)
      lower.push_back((a[i] - k * a[a.size() - 1 - i]) / (1.0L - k * k));
    a = lower;
  }
  return true;
}

}  // namespace layouts
