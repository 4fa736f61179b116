/** How far the levels of two forms of a filter are apart. */
#ifndef ANALYSIS_LEVEL_DIFFERENCE_H
#define ANALYSIS_LEVEL_DIFFERENCE_H

#include "analysis/filter.h"

namespace analysis {

/** The largest difference between two levels, and where. */
struct LevelDifference {
  double db; /**< not negative; infinite where a form's level is NaN */
  double w;  /**< the first place in ascending order that has it */
};

/**
 * The largest difference in dB over the grid of the first form. Levels lower than `floor_db`
 * below that form's peak count as that floor, so that inaudible differences do not count, but a
 * stopband that rises above the floor in only one form does.
 *
 * Cost: proportional to n^2.
 * Accuracy: that of `level_db` at the places looked at. Between them the difference can be larger,
 * in the tests by less than 5 percent.
 * @param trusted   whose roots make the grid
 * @param floor_db  positive
 */
LevelDifference level_difference(const Roots &trusted, const Sections &other, double floor_db);
LevelDifference level_difference(const Roots &trusted, const Transfer &other, double floor_db);
LevelDifference level_difference(const Sections &trusted, const Transfer &other, double floor_db);
LevelDifference level_difference(const Sections &trusted, const Sections &other, double floor_db);

}  // namespace analysis

#endif
