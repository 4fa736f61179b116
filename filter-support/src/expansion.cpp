#include "expansion.h"

#include "filtermath/complex64.h"

namespace filtermath {

// From the highest index down, each step still finds the old values below.
void multiply_by_root(std::complex<double> *coefficients, std::size_t degree,
                      const std::complex<double> &root) {
  for (std::size_t j = degree + 1; j >= 1; --j)
    coefficients[j] -= filtermath_product(coefficients[j - 1], root);
}

Quadratic quadratic(const std::complex<double> &r1, const std::complex<double> &r2) {
  std::complex<double> coefficients[3] = {1.0, 0.0, 0.0};
  multiply_by_root(coefficients, 0, r1);
  multiply_by_root(coefficients, 1, r2);
  return {coefficients[1].real(), coefficients[2].real()};
}

}  // namespace filtermath
