// Inverses and eigenvalues by the irreducible form of a matrix. The only user of Eigen.
#ifndef FILTERMATH_SRC_IRREDUCIBLE_H
#define FILTERMATH_SRC_IRREDUCIBLE_H

#include "filtermath/complex64.h"
#include "filtermath/matrix64.h"

namespace filtermath {

/**
 * What `matrix64_inverse` does for a square matrix of at least one row. dst is
 * untouched until nothing can fail any more but its own reshaping.
 */
void inverse(_matrix64 *dst, const _matrix64 *src);

/**
 * The eigenvalues of a square matrix, as many as it has rows, in an order that
 * expands well. Where they cannot be computed (an element is not finite, or the
 * iteration does not converge) each is NaN.
 */
t_complex64list eigenvalues(const _matrix64 *matrix);

}  // namespace filtermath

#endif
