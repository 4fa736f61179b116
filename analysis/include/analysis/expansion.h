/** Sections multiplied out into one transfer function. */
#ifndef ANALYSIS_EXPANSION_H
#define ANALYSIS_EXPANSION_H

#include "analysis/filter.h"

namespace analysis {

/**
 * The product of all numerators and that of all denominators. Trailing coefficients that are zero
 * in both, as first-order sections leave them, are dropped.
 *
 * Cost: proportional to n^2 for n sections.
 * Accuracy: products and sums are made in long double and rounded to doubles once, at the end. The
 * coefficients are accurate; the filter that they describe need not be: poles that crowd together,
 * of a narrow or a high-order filter, may be displaced by that one rounding far enough to leave the
 * unit circle (`schur_cohn_stable`) or to change the response (`level_difference`). Coefficients
 * beyond the range of doubles become infinite or 0.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.3.2 (the cascade
 * form, read from right to left).
 * @return both lists of the same length, the denominator's first coefficient 1; {1} and {1} without
 *         sections
 */
Transfer expanded(const Sections &filter);

}  // namespace analysis

#endif
