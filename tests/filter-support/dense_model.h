#ifndef TESTS_FILTER_SUPPORT_DENSE_MODEL_H
#define TESTS_FILTER_SUPPORT_DENSE_MODEL_H

#include "support.h"

namespace support {

/**
 * A model of n states in which no element is 0 or like another: a single component, and with
 * a B that is not (1, 0, ..., 0), as that of every all-pole prototype is.
 */
inline Model dense(std::size_t n) {
  std::vector<std::vector<double>> a(n, std::vector<double>(n));
  std::vector<double> b(n);
  std::vector<double> c(n);
  for (std::size_t r = 0; r < n; ++r) {
    for (std::size_t k = 0; k < n; ++k)
      a[r][k] = (r == k ? -3.0 : 0.0) + 0.3 * std::sin(static_cast<double>(7 * r + 5 * k + 1));
    b[r] = 0.7 + 0.3 * static_cast<double>(r);
    c[r] = 1.1 - 0.37 * static_cast<double>(r);
  }
  return model(a, b, c, 2.3);
}

}  // namespace support

#endif
