/** Analog lowpass prototypes. */
#ifndef FILTERMATH_PROTOTYPES_H
#define FILTERMATH_PROTOTYPES_H

#include "filtermath/zpk.h"

extern "C" {

// Each stores a new record through `out`, to be released with `zpk_free`; what
// `out` held before is not read. Orders below 1 give records without roots.

/** Reserved for the Bessel family; does nothing. */
void filtermath_besselap(void);

/**
 * Butterworth: |H|^2 = 1 / (1 + w^(2n)), 3.01 dB down at 1 rad/s ([OS] B.1).
 * Poles come in pairs, the upper member first, by growing angle; the real pole
 * of an odd order is last and exactly -1.
 */
void filtermath_buttap(int order, t_zpk **out);

/**
 * Chebyshev type I: |H|^2 = 1 / (1 + eps^2 T_n(w)^2), the ripple ending at
 * 1 rad/s ([OS] B.2). Poles come by growing angle; the real pole of an odd
 * order is the middle one. An even order has the gain of the ripple's bottom
 * at 0 rad/s.
 * @param ripple_db  of the passband, above 0
 */
void filtermath_cheby1ap(int order, t_zpk **out, double ripple_db);

/**
 * Chebyshev type II: the stopband begins at 1 rad/s ([OS] B.2, [PB] 7.2).
 * Zeros come in pairs, the upper member first, by growing magnitude; an odd
 * order has one zero fewer than poles. Poles come by growing angle of their
 * reciprocals.
 * @param attenuation_db  of the stopband, above 0
 */
void filtermath_cheby2ap(int order, t_zpk **out, double attenuation_db);

}  // extern "C"

#endif
