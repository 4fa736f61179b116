/** How many poles of a transfer function are outside the unit circle. */
#ifndef ANALYSIS_POLES_OUTSIDE_H
#define ANALYSIS_POLES_OUTSIDE_H

#include <cstddef>
#include <optional>

#include "analysis/filter.h"

namespace analysis {

/**
 * Counts the roots of a denominator outside the unit circle by the principle of the argument:
 * a root inside turns D(exp(j pi w)) by pi while w goes from 0 to 1, one outside does not. No
 * root is computed, so that a polynomial whose roots are ill-conditioned is judged as it is.
 * Steps that turn it by more than half a radian are halved.
 *
 * Cost: proportional to n times the number of places in `at`, hence to n^2 with a grid, and more
 * the closer a root is to the circle.
 * Accuracy: where the answer is uncertain, none is given. A pair 1e-9 from the circle is counted on
 * its side in a polynomial of third order.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 5.3 (phase
 * of a single root); Churchill & Brown, Complex Variables and Applications, on the argument
 * principle.
 * @param denominator  highest power of z first, at least two coefficients, the first not 0
 * @param at           ascending from 0 to 1, a grid of the intended filter: where to look first
 * @return how many, a pair counting as two; none if D cannot be distinguished from 0, that is, if
 *         at some w it is smaller than its possible rounding error
 */
std::optional<std::size_t> poles_outside(const std::vector<double> &denominator,
                                         const std::vector<double> &at);

}  // namespace analysis

#endif
