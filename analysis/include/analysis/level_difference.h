/** How far the levels of two forms of a filter are apart. */
#ifndef ANALYSIS_LEVEL_DIFFERENCE_H
#define ANALYSIS_LEVEL_DIFFERENCE_H

#include "analysis/filter.h"

namespace analysis {

/** The largest difference between two levels, and where. */
struct LevelDifference {
  double db; /**< not negative; infinite where a form's level is NaN */
  double w;  /**< a place that has it */
};

/**
 * The largest difference in dB over all frequencies. Levels lower than `floor_db` below the peak
 * of the first form count as that floor, so that inaudible differences do not count, but a
 * stopband that rises above the floor in only one form does.
 *
 * It is looked for on the grid of both forms' roots, and refined between the neighbours of each
 * place that may be the largest. A transfer function adds no places of its own: its roots need not
 * be known well enough to be any.
 *
 * Cost: proportional to n^2.
 * Accuracy: that of `level_db` at the places looked at. Between them the difference of sections can
 * be larger by less than 1 percent, in the tests, also where a zero on the circle has moved.
 * @param floor_db  positive
 */
LevelDifference level_difference(const Roots &trusted, const Sections &other, double floor_db);
LevelDifference level_difference(const Roots &trusted, const Transfer &other, double floor_db);
LevelDifference level_difference(const Sections &trusted, const Transfer &other, double floor_db);
LevelDifference level_difference(const Sections &trusted, const Sections &other, double floor_db);

}  // namespace analysis

#endif
