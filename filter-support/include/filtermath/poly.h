/** Polynomials from roots and from matrices, the highest power first. */
#ifndef FILTERMATH_POLY_H
#define FILTERMATH_POLY_H

#include "filtermath/complex64.h"
#include "filtermath/matrix64.h"

/**
 * Expands the monic polynomial with the given roots.
 * @param coefficients  replaced by roots.size() + 1 values, the first 1.0.
 *                      They keep their imaginary parts. Rounding depends on the
 *                      order of the roots, which is kept.
 */
void filtermath_poly(const t_complex64list &roots, t_complex64list &coefficients);

/**
 * The characteristic polynomial det(s I - matrix), from the eigenvalues.
 * @param matrix        n x n
 * @param coefficients  reshaped to 1 x (n + 1), real parts only
 * @return 0, or -1 when the matrix is not square (coefficients untouched)
 */
int filtermath_poly(const _matrix64 *matrix, _matrix64 *coefficients);

#endif
