/** Second-order sections of zeros, poles and gain. */
#ifndef FILTERMATH_ZPK2SOS_H
#define FILTERMATH_ZPK2SOS_H

#include "brontal/symbol.h"
#include "filtermath/linkage.h"
#include "filtermath/zpk.h"

FILTERMATH_BEGIN

/**
 * Groups a digital filter into sections b0 b1 b2 a1 a2, each
 * H = (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2).
 *
 * The pole pair nearest to the unit circle comes first. An odd number of poles
 * ends in a first-order section, stored with b2 = a2 = 0. The gain is in the
 * first section alone, and in none if that is of first order. The numerators of
 * Butterworth and Chebyshev type I filters are fixed by the response, except for
 * a bandstop; there, and for Chebyshev type II, each pole pair takes the nearest
 * pair of zeros left. Zeros that are missing count as lying at z = -1. Without
 * poles there are no sections.
 *
 * Each coefficient is a sum or a product of two roots: right to a few roundings, so that
 * sections keep every pole and zero up to order 200 (docs/accuracy.md). Pole pairs nearly as
 * far from the circle as each other may change places with the last digit of a pole. Time
 * grows with n log n for n roots where the numerators are fixed, and with n^2 log n otherwise.
 *
 * @param zpk        its roots in conjugate pairs or real; read only
 * @param topology   the family; an unknown one is grouped like "chebyshev-2",
 *                   but with its zeros paired by halves, as those of the
 *                   all-pole families are
 * @param sos        receives new storage from the host's memory calls, owned by
 *                   the caller and released with `sysmem_freeptr`
 * @param sos_count  receives the number of doubles: five per section
 */
void filtermath_zpk2sos(const t_zpk *zpk, t_symbol *topology, t_symbol *response, double **sos,
                        int64_t *sos_count);

FILTERMATH_END

#endif
