/** The transfer function of zeros, poles and gain. */
#ifndef FILTERMATH_ZPK2TF_H
#define FILTERMATH_ZPK2TF_H

#include <cstdint>

#include "filtermath/zpk.h"

extern "C" {

/**
 * Expands zeros, poles and gain. Imaginary parts are dropped, so roots must
 * come in conjugate pairs.
 * @param unused   may be null
 * @param b_count  receives the number of zeros + 1
 * @param a_count  receives the number of poles + 1
 */
void filtermath_zpk2tf(const t_zpk *zpk, void *unused, double **b, int64_t *b_count, double **a,
                       int64_t *a_count);

}  // extern "C"

#endif
