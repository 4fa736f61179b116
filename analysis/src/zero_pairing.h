/** Zeros paired with the poles that are nearest to them. */
#ifndef ANALYSIS_ZERO_PAIRING_H
#define ANALYSIS_ZERO_PAIRING_H

#include "analysis/filter.h"

namespace analysis {

/**
 * The same filter with each pair of poles beside the zeros that are nearest: the pole nearest to
 * the circle chooses first, of two real zeros first one and then the other. Complex zeros stay
 * in pairs, whose numerators move as they are. Sections with a zero or a pole at 0, or a zero at
 * infinity, keep their numerators.
 *
 * Each numerator of a new pair begins with what one of the given began with, so that the gain
 * stays without a product that could overflow.
 *
 * Cost: proportional to n^2.
 * Accuracy: that of `quadratic_roots`, and of a few products.
 * @param filter  finite, with no numerator of zeros
 * @return the sections in the same order, each with its own poles
 */
Sections with_nearest_zeros(const Sections &filter);

}  // namespace analysis

#endif
