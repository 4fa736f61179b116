/** Cascades in fixed point that cannot overflow. */
#ifndef ANALYSIS_FIXED_SCALING_H
#define ANALYSIS_FIXED_SCALING_H

#include <optional>

#include "analysis/filter.h"
#include "analysis/fixed_point.h"
#include "analysis/structure.h"

namespace analysis {

struct ScaledCascade {
  FixedCascade cascade;
  Sections wanted;           /**< the sections that the integers were rounded from; their product is
                                  the filter but for a constant */
  int shift;                 /**< the output is 2^-shift times that of the filter;
                                  0 to 30 */
  std::vector<double> reach; /**< the most that the output of each section can be, for any input
                                  within full scale and with all roundings; less than 1 */
  double error;              /**< the most that all roundings together make at the output; what is
                                  left for ever after an input has stopped is no more */
};

/** The sections with their feedback terms as integers hold them, and their numerators as given: what
 *  becomes of the poles, whatever gain the sections get. Raises as `fixed_cascade` does. */
Sections with_fixed_feedback(Sections filter, Arithmetic arithmetic);

/**
 * The cascade with a gain for each section such that no output of a section can leave the range of
 * the arithmetic, whatever the input within full scale: the sum of the magnitudes of the impulse
 * response up to there, of the integers as they run, and those of the responses to each rounding
 * before it, stay below full scale. Gains are as large as that allows, up to where a numerator
 * would need more room than the feedback terms.
 *
 * The last section makes up for the gains of the others, so that the whole is the filter, times the
 * largest power of two from 1 downwards that leaves the output within range. Within 3 dB of the
 * filter's peak its level deviates from that as far upwards as downwards.
 *
 * The order and the feedback terms are those given. Where there is a choice, the gain is one for
 * which the numerator's integers are nearly in proportion to the coefficients.
 *
 * Cost: proportional to the square of the number of sections times the time constant of the slowest
 * pole.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.8 (scaling by
 * the sum of the magnitudes of the impulse response).
 * @param filter  at least one section; finite, none with a numerator of zeros
 * @return none if the integers make an unstable filter, if its roundings alone could fill half of
 *         the range, if it would take a shift of more than 30 or if `norms_from_input` does not end
 * Raises std::invalid_argument unless `arithmetic` is fixed_32 or fixed_16.
 */
std::optional<ScaledCascade> scaled_for_fixed(const Sections &filter, Arithmetic arithmetic);

}  // namespace analysis

#endif
