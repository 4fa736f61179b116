#include <algorithm>
#include <cmath>

#include "internal.h"

namespace filtermath {

// The orderings are none for NaNs, and a sort with an inconsistent ordering may
// run out of its range; so NaNs are put aside first. A stable sort makes the
// result the same with every standard library.

bool is_real(const std::complex<double> &root) { return !(root.imag() < 0.0 || root.imag() > 0.0); }

void sort_roots(t_complex64list &roots) {
  const auto ordered = [](const std::complex<double> &root) {
    return !std::isnan(root.real()) && !std::isnan(root.imag());
  };
  const auto end = std::stable_partition(roots.begin(), roots.end(), ordered);
  std::stable_sort(roots.begin(), end, complex64_cmp);
}

void sort_pairs(std::vector<t_complex64pair> &pairs) {
  const auto ordered = [](const t_complex64pair &pair) { return !std::isnan(pair.key); };
  const auto end = std::stable_partition(pairs.begin(), pairs.end(), ordered);
  std::stable_sort(pairs.begin(), end, complex64pair_cmp);
}

}  // namespace filtermath
