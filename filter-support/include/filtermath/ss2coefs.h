/** The denominator of a digital model. */
#ifndef FILTERMATH_SS2COEFS_H
#define FILTERMATH_SS2COEFS_H

#include <cstdint>

#include "filtermath/statespace.h"

extern "C" {

// Arrays of coefficients are in new storage from the host's memory calls, owned
// by the caller and released with `sysmem_freeptr`. The coefficient of z^0 comes
// first: H = (num[0] + num[1] z^-1 + ...) / (1 + den[1] z^-1 + ...).

/**
 * The denominator of a digital model: the characteristic polynomial of its A.
 * @param num, num_count  not used
 * @param den_count       receives n + 1
 */
void filtermath_ss2coefs(const _statespace *ss, double **num, int64_t *num_count, double **den,
                         int64_t *den_count);

}  // extern "C"

#endif
