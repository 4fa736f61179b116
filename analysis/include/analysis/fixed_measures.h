/** What a cascade in fixed point does when it runs, where no formula says it. */
#ifndef ANALYSIS_FIXED_MEASURES_H
#define ANALYSIS_FIXED_MEASURES_H

#include <optional>

#include "analysis/fixed_point.h"

namespace analysis {

struct FixedMeasures {
  double noise_db;    /**< the error for white noise, as `Noise::white_db` has it, but without what
                           rounded coefficients do */
  double offset;      /**< the mean of that error, in units of the last place of a sample */
  double limit_cycle; /**< the largest output, in these units, that went on after an input had
                           stopped and what the sections do without rounding had died away */
};

/**
 * Runs the cascade, see `run_fixed`, beside the same sections in long double, with noise spread
 * evenly over full scale, the same each time. Limit cycles are looked for in the silence after the
 * largest sample and after the smallest one, each held for as long as the slowest pole needs, and
 * after noise that stops at eight moments.
 *
 * A limit cycle depends on the signal before it. Another one may leave a larger one;
 * `ScaledCascade::error` bounds them all.
 *
 * Cost: that of eleven runs of some fifty time constants of the slowest pole each.
 * Accuracy: the noise varies by some tenths of a decibel from one noise to another.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.10 (zero-input
 * limit cycles).
 * @return none if a pole is on the circle or outside, if the output for noise is silent, or if a run
 *         would take more than 2^25 samples times sections
 */
std::optional<FixedMeasures> fixed_measures(const FixedCascade &cascade);

}  // namespace analysis

#endif
