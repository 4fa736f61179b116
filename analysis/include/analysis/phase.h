/** Phase and group delay. */
#ifndef ANALYSIS_PHASE_H
#define ANALYSIS_PHASE_H

#include "analysis/filter.h"

namespace analysis {

/** Zeros that are no further than this from the unit circle count as lying on it. Rounding puts a
 *  zero on the circle on either side of it, and without this the phase would jump up at one zero
 *  and down at the next. Poles never count as on it. */
inline constexpr double on_circle = 1e-9;

/**
 * The phase of H at w in radians, in (-pi, pi].
 *
 * Cost: proportional to n.
 * Accuracy: 1e-10 for roots and sections, wherever the level is above -4000 dB; for a transfer
 * function see `response`.
 */
double wrapped_phase(const Roots &filter, double w);
double wrapped_phase(const Sections &filter, double w);
double wrapped_phase(const Transfer &filter, double w);

/**
 * The phase of H at w in radians, continuous in w except for a rise of pi at each zero on the unit
 * circle, where the response changes sign. It is the sum of the roots' own continuous phases, so
 * that it does not depend on any grid, plus the multiple of 2 pi that puts it into (-pi, pi] just
 * above w = 0. At a zero on the circle it is the value just above, at w = 1 the one just below.
 *
 * Cost: proportional to n.
 * Accuracy: 1e-9 from roots. From sections it is within 1e-6 of that of their roots, because these
 * are computed, not given; a zero of sections that rounding has taken off the circle by more than
 * `on_circle` is not on it.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 5.3.1 (the
 * phase of a single zero or pole).
 */
double unwrapped_phase(const Roots &filter, double w);
double unwrapped_phase(const Sections &filter, double w);

/**
 * Minus the derivative of the phase by the angle pi w, in samples. A pole p = r exp(j phi)
 * adds ((1 - r^2) / |exp(j pi w) - p|^2 - 1) / 2 and a zero takes as much away, which is 1/2
 * added for a zero on the unit circle; a filter with fewer zeros than poles is delayed by one more
 * sample for each missing zero.
 * The jumps of the phase at zeros on the circle do not count as delay.
 *
 * Cost: proportional to n.
 * Accuracy: 1e-12 (narrow 1e-11) of the longest delay a pole makes, 1 / (1 - radius), and 1e-9
 * samples.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 5.3.1 (the
 * group delay of a single zero or pole), here in the form that does not cancel near the circle.
 */
double group_delay(const Roots &filter, double w);
double group_delay(const Sections &filter, double w);

}  // namespace analysis

#endif
