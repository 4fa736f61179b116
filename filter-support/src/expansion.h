// Polynomials of few roots, expanded in place.
#ifndef FILTERMATH_SRC_EXPANSION_H
#define FILTERMATH_SRC_EXPANSION_H

#include <complex>

namespace filtermath {

/**
 * Multiplies a polynomial by (x - root), in place.
 * @param coefficients  the highest power first
 * @param degree        of the polynomial; behind it there is room for one more coefficient,
 *                      which is 0
 */
void multiply_by_root(std::complex<double> *coefficients, std::size_t degree,
                      const std::complex<double> &root);

/** The real parts of (x - r1) (x - r2) behind x^2: first x^1, second x^0. */
struct Quadratic {
  double first;
  double second;
};

/** What `filtermath_poly` makes of two roots, without a list. */
Quadratic quadratic(const std::complex<double> &r1, const std::complex<double> &r2);

}  // namespace filtermath

#endif
