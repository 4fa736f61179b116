/** Frequency transformations of analog models. */
#ifndef FILTERMATH_TRANSFORMATIONS_H
#define FILTERMATH_TRANSFORMATIONS_H

#include "brontal/symbol.h"
#include "filtermath/statespace.h"

extern "C" {

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
