/** Roundings of all sections put together. */
#ifndef ANALYSIS_NOISE_PREDICTION_H
#define ANALYSIS_NOISE_PREDICTION_H

#include <vector>

#include "analysis/noise.h"
#include "frequency_steps.h"
#include "rounded_section.h"

namespace analysis {

/**
 * The noise of a cascade of rounded sections, each pole inside the circle.
 * Cost: proportional to the number of sections times that of steps.
 */
Noise predicted_noise(const std::vector<RoundedSection> &sections, const FrequencySteps &steps,
                      Arithmetic arithmetic, double amplitude);

}  // namespace analysis

#endif
