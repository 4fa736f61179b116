/** The search for a quiet order of sections. */
#ifndef ANALYSIS_SECTION_ORDER_H
#define ANALYSIS_SECTION_ORDER_H

#include "section_levels.h"

namespace analysis {

/** Places in the list of sections, from the first section that runs to the last. */
using Order = std::vector<std::size_t>;

/** An order and how noisy it is: the sum that `arranged` minimises. */
struct JudgedOrder {
  Order order;
  double noise;
};

/**
 * The quietest order found, as `arranged` describes it.
 *
 * Cost: proportional to n^2 for n sections: the number of windows and that of the frequencies grow
 * with n.
 * Source: Held & Karp, "A Dynamic Programming Approach to Sequencing Problems" (1962), for the best
 * order within a window.
 * @param start   an order to begin with
 * @param levels  of each section, at the frequencies of the grid
 */
JudgedOrder quiet_order(Order start, const std::vector<GridLevels> &levels, const LevelGrid &grid);

/**
 * The places of the sections sorted by the angles of their poles, taken first, middle, first
 * quarter, third quarter, and so on: the order of van der Corput.
 */
Order spread_order(const Sections &filter);

}  // namespace analysis

#endif
