/** The denominator of a digital model. */
#ifndef FILTERMATH_SS2COEFS_H
#define FILTERMATH_SS2COEFS_H

#include "filtermath/linkage.h"
#include "filtermath/statespace.h"

FILTERMATH_BEGIN

/**
 * The denominator of a digital model, 1 + den[1] z^-1 + ... + den[n] z^-n: the
 * characteristic polynomial of its A as `filtermath_poly` expands it, at its cost.
 *
 * Relative to the largest coefficient, the error of a whole design is at most 6e-13 up to
 * order 64, and 8e-04 at order 200 (docs/accuracy.md). Even exact coefficients, rounded to
 * doubles, move poles far where these crowd.
 *
 * @param num, num_count  not used, and may be null
 * @param den             receives n + 1 doubles, the coefficient of z^0 first, in new
 *                        storage from the host's memory calls; the caller's, released with
 *                        `sysmem_freeptr`
 * @param den_count       receives how many: n + 1, or 0 for an A that is not square
 */
void filtermath_ss2coefs(const _statespace *ss, double **num, int64_t *num_count, double **den,
                         int64_t *den_count);

FILTERMATH_END

#endif
