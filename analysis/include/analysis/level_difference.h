/** How far two forms of a filter agree. */
#ifndef ANALYSIS_LEVEL_DIFFERENCE_H
#define ANALYSIS_LEVEL_DIFFERENCE_H

#include "analysis/filter.h"

namespace analysis {

/** The largest difference between two levels, and where. */
struct LevelDifference {
  double db; /**< not negative; infinite where a form's level is not a number */
  double w;
};

/**
 * The largest difference in dB over the grid of the first form. Levels lower than `floor_db`
 * below that form's peak count as that floor, so that what nobody hears does not count, and a
 * stopband that rises above the floor in one form only does.
 * @param floor_db  positive
 */
LevelDifference level_difference(const Roots &trusted, const Sections &other, double floor_db);
LevelDifference level_difference(const Roots &trusted, const Transfer &other, double floor_db);
LevelDifference level_difference(const Sections &trusted, const Transfer &other, double floor_db);
LevelDifference level_difference(const Sections &trusted, const Sections &other, double floor_db);

}  // namespace analysis

#endif
