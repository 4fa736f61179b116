/** Polynomials from roots and from matrices, the highest power first. */
#ifndef FILTERMATH_POLY_H
#define FILTERMATH_POLY_H

#include "filtermath/complex64.h"
#include "filtermath/matrix64.h"

/**
 * Expands the monic polynomial with the given roots, one root after the other. Time grows
 * with the square of their number; nothing is allocated but the result.
 *
 * A coefficient is off by at most a few roundings per root, not of itself but of the same
 * coefficient of the polynomial with the roots -|r|. Roots on all sides of 0 make that one
 * far larger, and small coefficients are then rounding. The order of the roots, which is
 * kept, decides how much of it occurs: partial products that grow no larger than the result cost no
 * digits.
 *
 * @param coefficients  replaced by roots.size() + 1 values, the first 1.0; must not be
 *                      `roots`. They keep their imaginary parts, which are exactly or
 *                      nearly 0 if the roots come in conjugate pairs.
 */
void filtermath_poly(const t_complex64list &roots, t_complex64list &coefficients);

/**
 * The characteristic polynomial det(s I - matrix), expanded from the eigenvalues. Time grows
 * with the square of the number of rows where the rows lead to each other in small groups
 * only, as in the models of this library, and with its cube at worst.
 *
 * The eigenvalues are those of blocks that rounding has moved by a few roundings of the
 * largest element ([GvL] 7.5); what the expansion does to them is said above.
 *
 * @param matrix        n columns, n rows
 * @param coefficients  reshaped to 1 column, n + 1 rows: real parts only. NaN except for the first
 *                      if the matrix is not finite or its eigenvalues do not converge.
 * @return 0, or -1 when the matrix is not square (coefficients untouched)
 */
int filtermath_poly(const _matrix64 *matrix, _matrix64 *coefficients);

#endif
