/**
 * The analog half of a design: lowpass prototypes, their state-space models,
 * and the frequency transformations.
 */
#ifndef FILTERMATH_ANALOG_H
#define FILTERMATH_ANALOG_H

#include "brontal/symbol.h"
#include "filtermath/records.h"

extern "C" {

// --- lowpass prototypes
//
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

// --- state space

/**
 * Realises zeros, poles and gain as a cascade of one first-order section (odd
 * orders) and second-order sections, each in controllable form with its two
 * states brought to the same scale ([Kai] 2.1).
 * @param zpk    with an even number of zeros, at most as many as poles: of others
 *               the last are used, by twos, as many as there are pairs of poles. A
 *               pole whose imaginary part is NaN counts as real.
 * @param model  as from `statespace_new`; filled
 */
void filtermath_zpk2ss(const t_zpk *zpk, _statespace *model);

// Frequency transformations, in place. The model is a lowpass with its edge at
// 1 rad/s, as `filtermath_zpk2ss` makes it.

/** s -> s / wo: moves the edge to wo ([OS] table 7.1, by its analog form). */
void filtermath_lp2lp(_statespace *ss, double wo);

/** s -> wo / s: a highpass with its edge at wo. A singular A is not detected. */
void filtermath_lp2hp(_statespace *ss, double wo);

/**
 * s -> (s^2 + wo^2) / (bw s): a bandpass; the number of states doubles.
 * @param wo  the geometric mean of the band's edges
 * @param bw  their difference; a negative one gives an unstable filter
 */
void filtermath_lp2bp(_statespace *ss, double wo, double bw);

/**
 * s -> bw s / (s^2 + wo^2): a bandstop; the number of states doubles.
 *
 * The feed-through of a "chebyshev-2" is set to exactly 1.0. Otherwise it is
 * D - C A^-1 B for four states, and D minus the first element of C A^-1 for any
 * other number: the same for the all-pole prototypes, whose B is (1, 0, ..., 0).
 */
void filtermath_lp2bs(_statespace *ss, t_symbol *topology, double wo, double bw);

}  // extern "C"

#endif
