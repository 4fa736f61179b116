// What to change in cutoffs, as settings.
#ifndef VERDICT_CUTOFF_REMEDIES_H
#define VERDICT_CUTOFF_REMEDIES_H

#include <vector>

#include "verdict/filter_under_test.h"

namespace verdict {

/** For cutoffs that were clipped: the other unit, which is what was meant where it fits; the nearest
 *  cutoffs that are not clipped; and for those that are too high the sample rate, doubled until
 *  they fit.
 *  @return those of them with which no cutoff is clipped and two have a band between them */
std::vector<designer::Settings> cutoffs_in_range(const FilterUnderTest &filter);

/** @return two cutoffs in reverse order, the lower first; empty for others. */
std::vector<designer::Settings> cutoffs_in_order(const FilterUnderTest &filter);

/** For a second cutoff that is not used: both responses that use it, with the lower cutoff first.
 *  @param cutoffs  two, as they were asked for
 *  @return empty if there is no band between them */
std::vector<designer::Settings> band_responses(const designer::Values &cutoffs);

}  // namespace verdict

#endif
