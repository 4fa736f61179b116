// Whether a filter works at all.
#ifndef VERDICT_HEALTH_H
#define VERDICT_HEALTH_H

#include "analysis/stability.h"
#include "verdict/filter_under_test.h"

namespace verdict {

/** @return whether all numbers of the roots and of the sections are finite. */
bool is_finite(const Forms &forms);

/** @return the stability of the roots or that of the sections, whichever is nearer to instability.
 */
analysis::Stability worst_stability(const Forms &forms);

/** @return the modulus of the gain of the roots or of that of the sections, whichever is smaller.
 *  0 if it is too small for a double: the filter is silent. */
double smallest_gain(const Forms &forms);

/** @return true if the levels of a filter are meaningful: it is finite, stable and not silent, and
 *  there is a band between its cutoffs. */
bool has_levels(const FilterUnderTest &filter);

}  // namespace verdict

#endif
