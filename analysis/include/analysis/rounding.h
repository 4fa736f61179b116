/** The sections in single precision. */
#ifndef ANALYSIS_ROUNDING_H
#define ANALYSIS_ROUNDING_H

#include "analysis/filter.h"
#include "analysis/level_difference.h"
#include "analysis/realization.h"
#include "analysis/stability.h"

namespace analysis {

/**
 * Each coefficient rounded to the nearest float, by its value as a double. A gain below 7e-46
 * becomes 0, one above 3.4e38 infinite. Cost: proportional to n.
 */
Sections rounded_to_float(const Sections &filter);

/** The same of a state-variable section. */
StateVariable rounded_to_float(const StateVariable &section);

/** What rounded coefficients do to a filter. */
struct RoundingEffect {
  double pole_movement;     /**< how far the pole moves that moves most, in the z plane */
  double worst_ratio;       /**< the largest movement relative to the pole's own distance from the
                               circle: 1 or more can make the filter unstable */
  Stability stability;      /**< of the changed sections */
  LevelDifference response; /**< the largest change of the level, see `level_difference` */
  bool silent;              /**< true if a section's numerator has become all zeros */
};

/**
 * Compares sections with rounded ones, section by section.
 *
 * Cost: proportional to n^2.
 * Accuracy: the movement of poles 1e-9 relative and 1e-16; the rest is that of `stability` and
 * `level_difference`.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.7 (the effects
 * of coefficient quantization).
 * @param floor_db  positive, as for `level_difference`
 * Raises std::invalid_argument when the numbers of sections differ.
 */
RoundingEffect rounding_effect(const Sections &before, const Sections &after, double floor_db);

/** The effect of `rounded_to_float`, as above. */
RoundingEffect float_rounding_effect(const Sections &filter, double floor_db);

/** The same of a filter that is ready to run: of what its coefficients compute, as `section_of` has
 *  it. */
RoundingEffect float_rounding_effect(const Realization &filter, double floor_db);

}  // namespace analysis

#endif
