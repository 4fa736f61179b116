/** The noise that rounding adds to a signal on its way through a cascade. */
#ifndef ANALYSIS_NOISE_H
#define ANALYSIS_NOISE_H

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/filter.h"
#include "analysis/structure.h"

namespace analysis {

/** The error at the output: its root of the mean square, in dB below the output's peak. */
struct Noise {
  /** For white noise that is spread evenly over -amplitude to amplitude. The peak is four times
   *  the output's root mean square, which normal noise exceeds once in 16,000 samples. */
  double white_db;
  /** For a sine of that amplitude, of the frequency at which the error is largest. The peak is the
   *  amplitude times that of |H| over all frequencies, so a sine in the stopband counts as well. */
  double sine_db;
  double sine_w;  /**< that frequency */
  bool overflows; /**< a section's output leaves the range of the arithmetic, for the sine of the
                     worst frequency or, at four times its root mean square, for the noise; what
                     overflows has an error of infinity */

  /** @return the larger of the two levels; infinity where it overflows or no level is known. */
  double worst_db() const {
    const double worst = std::max(white_db, sine_db);
    const bool known = !overflows && !std::isnan(white_db) && !std::isnan(sine_db);
    return known ? worst : std::numeric_limits<double>::infinity();
  }
};

/**
 * The noise of the sections run one after the other, as `run.h` and `fixed_point.h` do it. 0 dB
 * is an error as large as the signal's peak; a positive level is possible.
 *
 * Each rounding is a source of white noise, independent of all others. In floating point its power
 * is 0.18 u^2 times that of the rounded number, u = 2^-24 or 2^-53, which is the mean over evenly
 * spread mantissas; in fixed point it is a twelfth of the square of a unit, with a mean of half a
 * unit, since the sum is rounded downwards. Its gain is the L2 norm of the response from there to
 * the output. To this comes the deviation of the response from that of the given sections, exactly
 * computed from the rounded coefficients. Products with a power of two and sums with 0 do not
 * round. An arithmetic that fuses multiplication and addition makes somewhat less noise.
 *
 * Errors that are no noise are taken account of where they follow from a sine or a coefficient: a
 * sine of few units, which each period rounds alike, and a coefficient next to a power of two, whose
 * products are rounded alike. A signal that stands still is beyond this: its error does not move,
 * and may be larger or smaller.
 *
 * Cost: proportional to n^2; some 30 ms for 200 sections.
 * Accuracy: docs/noise.md compares it with filters that run.
 * Source: Jackson, "On the interaction of roundoff noise and dynamic range in digital filters"
 * (1970), for the sources and their gains in a cascade; Rao, "Analysis of coefficient quantization
 * errors in state-space digital filters" (1986) and "Floating point arithmetic and digital filters"
 * (1992), for floating point; Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed.,
 * sections 6.8 and 6.9.
 * @param amplitude  above 0; matters in fixed point, where 1 is full scale, and at the ends of the
 *                   range in floating point
 * @return levels of NaN if a coefficient or the amplitude is not finite, or if the filter is silent;
 *         infinity if a pole, as given or as rounded, is on the circle or outside; minus infinity if
 *         nothing is rounded
 * Raises std::invalid_argument for fixed point in a structure other than direct form I, and where
 * `fixed_cascade` does.
 */
Noise noise(const Sections &filter, Structure structure, Arithmetic arithmetic,
            double amplitude = 1.0);

/**
 * The same for state-variable sections with coefficients of the caller's, as those from roots. The
 * deviation is that from what they compute as they are given, so that there is none in doubles.
 * Raises std::invalid_argument for fixed point.
 */
Noise noise(const std::vector<StateVariable> &forms, Arithmetic arithmetic, double amplitude = 1.0);

}  // namespace analysis

#endif
