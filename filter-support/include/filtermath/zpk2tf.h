/** The transfer function of zeros, poles and gain. */
#ifndef FILTERMATH_ZPK2TF_H
#define FILTERMATH_ZPK2TF_H

#include "filtermath/linkage.h"
#include "filtermath/zpk.h"

FILTERMATH_BEGIN

/**
 * Expands zeros, poles and gain: H = gain prod(s - zeros) / prod(s - poles) as
 * (b[0] s^m + ... + b[m]) / (s^n + ... + a[n]), as `filtermath_poly` does and with its
 * rounding. Imaginary parts are dropped, so roots must come in conjugate pairs. Time grows with
 * the square of the number of roots. The arrays are in new storage from the host's memory
 * calls, the caller's, and released with `sysmem_freeptr`. When memory runs out, none is
 * handed over.
 * @param unused   may be null
 * @param b        receives the numerator, times the gain
 * @param b_count  receives its doubles: the number of zeros + 1
 * @param a        receives the denominator, the first 1.0
 * @param a_count  receives its doubles: the number of poles + 1
 */
void filtermath_zpk2tf(const t_zpk *zpk, void *unused, double **b, int64_t *b_count, double **a,
                       int64_t *a_count);

FILTERMATH_END

#endif
