/** Norms of the impulse responses within a cascade, which bound its signals. */
#ifndef ANALYSIS_IMPULSE_NORMS_H
#define ANALYSIS_IMPULSE_NORMS_H

#include <cstddef>

#include "analysis/filter.h"

namespace analysis {

/** The norms of one impulse response. */
struct Norms {
  double l1; /**< the sum of magnitudes: the largest output of all inputs within -1 to 1 */
  double l2; /**< the root of the sum of squares: the gain of white noise's root mean square */
};

/**
 * From the input of the cascade to the output of each section.
 *
 * The response runs until the last time constant added less than 1e-8 of each norm and half of
 * what the one before it added. It is counted twice in `l1`, since all that is lacking is less.
 *
 * Cost: proportional to the number of sections times the time constant of the slowest pole.
 * Accuracy: `l1` is too large by at most 1e-8, `l2` is within 1e-15; both lose
 * what the recursion in doubles does: 1e-16 over the squared distance of the poles from 1 or -1.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.8 (scaling by
 * the sum of the magnitudes of the impulse response).
 * @return as many as `filter` has sections; all infinite if a pole is on the circle or outside, or
 *         if it would take more than 2^25 samples times sections
 */
std::vector<Norms> norms_from_input(const Sections &filter);

/**
 * From an error in the sum of the section `first`, as rounding it makes one, to the output of that
 * section and of each one after it. The error enters where direct form I has its only sum, so the
 * zeros of its own section do not filter it. Cost and accuracy as above.
 * @param first  counted from 0, and less than the number of sections
 * @return as many as there are sections from `first` on
 */
std::vector<Norms> norms_from_rounding(const Sections &filter, std::size_t first);

}  // namespace analysis

#endif
