/** Frequencies that miss no feature of a response. */
#ifndef ANALYSIS_GRID_H
#define ANALYSIS_GRID_H

#include "analysis/band.h"
#include "analysis/filter.h"

namespace analysis {

/**
 * Ascending frequencies within `range`, both ends included: the angle of every root, points
 * beside it at distances that begin with its own from the unit circle and grow by the
 * factor 2, and even steps between neighbouring angles. Neighbours lie so close that no two
 * extrema of the level of a filter of these roots fall between the same two. A smooth curve needs
 * the steps of its own axis besides.
 *
 * Cost: fewer than forty points a root, however narrow the filter is, and the time to sort them.
 * Accuracy: neighbouring points are apart by no more than a sharp root's distance from the circle
 * and one and a half times the way to it.
 * @param range  ascending within 0..1
 * @return no point twice; a root that is not finite adds none
 */
std::vector<double> grid(const Roots &filter, const Interval &range);
std::vector<double> grid(const Sections &filter, const Interval &range);

}  // namespace analysis

#endif
