/** Scaling a cascade: its level, and how its gain is distributed. */
#ifndef ANALYSIS_CASCADE_GAIN_H
#define ANALYSIS_CASCADE_GAIN_H

#include <optional>

#include "analysis/filter.h"

namespace analysis {

/**
 * The factor that makes the level of a filter `db` at w.
 *
 * Cost: proportional to the number of sections.
 * Accuracy: that of `level_db`, some 1e-12 relative.
 * @return none if the filter is silent or infinite at w, or if the factor is not a normal double
 */
std::optional<double> gain_factor(const Sections &filter, double w, double db);

/**
 * The filter with the numerator of its first section multiplied. Each coefficient is rounded once,
 * which shows in the level only close to a zero of that section.
 * @param filter  at least one section
 */
Sections scaled(Sections filter, double factor);

/**
 * The filter with its gain distributed: the response from the input to the output of each section
 * but the last gets a peak between -3.0103 and +3.0103 dB. Each numerator is multiplied by a power
 * of two, and the powers cancel, so the whole filter stays the same to the bit unless a coefficient
 * leaves the range of normal doubles. From the first section whose output has no finite peak (a
 * pole on the circle, or a numerator of zeros), the gain stays as given.
 *
 * Cost: that of `running_peaks`, proportional to n^2 for n sections.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.8 (scaling in
 * fixed-point implementations of IIR systems), with the scale factors rounded to powers of two.
 */
Sections with_gain_spread(Sections filter);

/**
 * The filter with its gain distributed so that no signal within -1 to 1 leaves that range between
 * its sections: the sum of the magnitudes of the impulse response from the input to the output of
 * each section but the last becomes more than a half and at most 1. Numerators are multiplied by
 * powers of two as above; the last one makes up for them, and its output is what it was.
 *
 * Cost: proportional to the number of sections times the time constant of the slowest pole.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.8 (scaling by
 * the sum of the magnitudes of the impulse response).
 * @return none if a gain leaves the range of normal doubles, or if `norms_from_input` does not end
 */
std::optional<Sections> with_gain_within_full_scale(const Sections &filter);

}  // namespace analysis

#endif
