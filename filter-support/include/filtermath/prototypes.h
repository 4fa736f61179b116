/**
 * Analog lowpass prototypes, their edge at 1 rad/s.
 *
 * Each function stores a new record through `out`, to be released with `zpk_free`; what
 * `out` held before is not read, and is left there when memory runs out. Orders below 1
 * give records without roots. Time grows in proportion to the order, and by the sorting of
 * the zeros for Chebyshev type II.
 *
 * Each root is right to a few roundings: it comes from one sine, one cosine and, for the
 * Chebyshev families, one scale for each part. Conjugates are exact. The gain is a product
 * over all roots and gathers a few roundings from each.
 */
#ifndef FILTERMATH_PROTOTYPES_H
#define FILTERMATH_PROTOTYPES_H

#include "filtermath/linkage.h"
#include "filtermath/zpk.h"

FILTERMATH_BEGIN

/** Reserved for the Bessel family; does nothing. */
void filtermath_besselap(void);

/**
 * Butterworth: |H|^2 = 1 / (1 + w^(2n)), 3.01 dB down at 1 rad/s ([OS] B.1).
 * `order` poles and no zeros. Poles come in pairs, the upper member first, by growing
 * angle; the real pole of an odd order is last and exactly -1.
 */
void filtermath_buttap(int order, t_zpk **out);

/**
 * Chebyshev type I: |H|^2 = 1 / (1 + eps^2 T_n(w)^2), the ripple ending at
 * 1 rad/s ([OS] B.2). `order` poles and no zeros. Poles come by growing angle; the real
 * pole of an odd order is the middle one. An even order has the gain of the ripple's
 * bottom at 0 rad/s.
 * @param ripple_db  of the passband in dB, above 0; others give roots that are not finite.
 *                   A small one costs digits of eps^2, a difference from 1: two at 0.1 dB.
 */
void filtermath_cheby1ap(int order, t_zpk **out, double ripple_db);

/**
 * Chebyshev type II: the stopband begins at 1 rad/s ([OS] B.2, [PB] 7.2). `order` poles,
 * and as many zeros, or one fewer for an odd order. Zeros come in pairs, the upper member
 * first, by growing magnitude. Poles come by growing angle of their reciprocals.
 * @param attenuation_db  of the stopband in dB, above 0; others give roots that are not
 *                        finite
 */
void filtermath_cheby2ap(int order, t_zpk **out, double attenuation_db);

FILTERMATH_END

#endif
