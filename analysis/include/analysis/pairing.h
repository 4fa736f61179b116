/** Whether the sections contain the published poles. */
#ifndef ANALYSIS_PAIRING_H
#define ANALYSIS_PAIRING_H

#include <cstddef>

#include "analysis/filter.h"

namespace analysis {

struct Pairing {
  bool intact;                        /**< every section has its pair, and no pole is left over */
  std::vector<std::size_t> strangers; /**< sections (counted from 0) that have no pair */
  std::vector<Complex> missing;       /**< poles that no section has; of a pair the upper one */
};

/**
 * Whether each section's denominator is that of one conjugate pair of the poles or of two real
 * ones, or of one real pole alone, each pole used once. A section has a pair p, q when both
 * |a1 + p + q| and |a2 - p q| are at most `tolerance`. Where a section fits several pairs, as many
 * sections as possible get one of their own; real poles go to the sections in their order, each to
 * the two that fit best.
 *
 * Cost: proportional to n^2, and to the cube of the number of real poles.
 * Accuracy: sections whose coefficients are rounded once from the poles are intact; one whose a1 is
 * off by 1e-12 does not match.
 * Source: the sections of a cascade, Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed.,
 * section 6.3.2; a largest bipartite matching by augmenting paths (Berge, 1957).
 * @param poles  complex ones with their conjugates
 * @param tolerance  2 units in the last place of 1 by default: what rounding once leaves
 */
Pairing pairing(const std::vector<Complex> &poles, const Sections &filter,
                double tolerance = 4.5e-16);

}  // namespace analysis

#endif
