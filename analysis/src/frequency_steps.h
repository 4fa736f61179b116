/** The upper half of the unit circle in steps for sums in place of integrals. */
#ifndef ANALYSIS_FREQUENCY_STEPS_H
#define ANALYSIS_FREQUENCY_STEPS_H

#include <vector>

#include "analysis/filter.h"

namespace analysis {

/** The middles of steps that cover the angles from 0 to pi. */
struct FrequencySteps {
  std::vector<double> w;              /**< as a fraction of Nyquist */
  std::vector<double> share;          /**< the step's part of the half circle; their sum is 1 */
  std::vector<double> from_one;       /**< 1 - cos(angle) */
  std::vector<double> from_minus_one; /**< 1 + cos(angle) */
  std::vector<double> sine;           /**< sin(angle) */

  std::size_t size() const { return w.size(); }
};

/**
 * Steps of a third of the distance to the nearest pole, in which a sum over the middles is the
 * integral of a squared response within some percent.
 *
 * Cost: fewer than twenty steps a pole, times the number of poles.
 * @param poles  finite; those below the real axis are passed over
 */
FrequencySteps frequency_steps(const std::vector<Complex> &poles);

}  // namespace analysis

#endif
