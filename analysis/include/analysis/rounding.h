/** What is left of the sections in single precision. */
#ifndef ANALYSIS_ROUNDING_H
#define ANALYSIS_ROUNDING_H

#include "analysis/filter.h"
#include "analysis/level_difference.h"
#include "analysis/stability.h"

namespace analysis {

/** Each coefficient rounded to the nearest float. A gain below 1e-45 becomes 0, one above
 *  3.4e38 infinite. */
Sections rounded_to_float(const Sections &filter);

/** The effect of changed coefficients. */
struct RoundingEffect {
  double pole_movement;     /**< how far the pole moves that moves most, in the z plane */
  double worst_ratio;       /**< the largest movement relative to the pole's own distance from the
                               circle: 1 or more can make the filter unstable */
  Stability stability;      /**< of the changed sections */
  LevelDifference response; /**< the largest change of the level, see `level_difference` */
  bool silent;              /**< whether a section's numerator has become all zeros */
};

/**
 * Compares sections with changed ones, section by section.
 * @param floor_db  as for `level_difference`
 * Raises std::invalid_argument when their numbers differ.
 */
RoundingEffect rounding_effect(const Sections &before, const Sections &after, double floor_db);

/** The effect of rounding to floats. */
RoundingEffect float_rounding_effect(const Sections &filter, double floor_db);

}  // namespace analysis

#endif
