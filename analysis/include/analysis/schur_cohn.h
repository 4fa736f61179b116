/** Whether a denominator is stable, from its coefficients alone. */
#ifndef ANALYSIS_SCHUR_COHN_H
#define ANALYSIS_SCHUR_COHN_H

#include "analysis/filter.h"

namespace analysis {

/**
 * Whether all roots of a denominator lie inside the unit circle: the step-down recursion takes one
 * order away at a time, and every reflection coefficient that it meets is below 1 in modulus.
 *
 * Cost: proportional to n^2 for n coefficients. No root is computed.
 * Accuracy: the recursion runs in long double. A step with the reflection coefficient k divides by
 * 1 - k^2, so that a sharp resonance leaves few digits to the steps after it: near the edge of
 * stability a polynomial of high order can be misjudged. `poles_outside` recognises when the answer
 * is uncertain, at a higher cost.
 * Source: the Schur-Cohn stability test, Proakis & Manolakis, Digital Signal Processing, 3rd ed.,
 * section 3.6.7.
 * @param denominator  highest power of z first, as in `Transfer`; at least one coefficient, the
 *                     first not 0
 * @return false also where a root is on the circle or a coefficient is not finite
 */
bool schur_cohn_stable(const std::vector<double> &denominator);

}  // namespace analysis

#endif
