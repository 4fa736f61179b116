/** The roots that each section was made of. */
#ifndef ANALYSIS_MATCHED_ROOTS_H
#define ANALYSIS_MATCHED_ROOTS_H

#include <optional>
#include <vector>

#include "analysis/filter.h"

namespace analysis {

/**
 * Finds for each section those of the given roots that its coefficients are rounded from. Sections
 * may stand in any order, with any gain and with zeros of other sections. Each root is used once.
 *
 * Cost: proportional to n^2.
 * @return for each section its roots, with b0 as the gain; none for a section whose zeros or poles
 *         are not among the given ones, or whose numerator begins with a zero
 */
std::vector<std::optional<Roots>> matched_roots(const Sections &filter, const Roots &roots);

}  // namespace analysis

#endif
