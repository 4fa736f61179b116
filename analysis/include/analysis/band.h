/** Where a filter passes and where it stops. */
#ifndef ANALYSIS_BAND_H
#define ANALYSIS_BAND_H

#include <cstddef>

#include "analysis/filter.h"

namespace analysis {

/** Frequencies from `low` to `high`, both included. */
struct Interval {
  double low, high;
};

/**
 * tan(pi w / 2): the analog frequency that the bilinear transform puts at w.
 * Accuracy: to the last digits at both ends; infinite at 1 and nowhere else.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 7.1.2.
 */
double prewarped(double w);

/**
 * The inverse of `prewarped`: `unwarped(prewarped(w))` is w to within 4 units in the last place.
 * @param analog  not negative
 */
double unwarped(double analog);

/**
 * The centre of two edges: the frequency whose prewarped value is the geometric mean of
 * theirs. A band response has there what its lowpass prototype has at 0 (bandpass) or at
 * infinity (bandstop).
 * Source: Parks & Burrus, Digital Filter Design, chapter 7.
 * @param low, high  above 0, below 1, in either order
 */
double band_centre(double low, double high);

/**
 * The intervals inside the edges of the passband, edges included.
 * @param edges  one, or for bandpass and bandstop two in ascending order
 * @return one interval, two for a bandstop
 * Raises std::invalid_argument unless the edges are as many as the response has, between 0 and 1,
 * both excluded, and strictly ascending.
 */
std::vector<Interval> passband(Band band, const std::vector<double> &edges);

/**
 * The intervals beyond the edges of the stopband, edges included.
 * @param edges  those of the stopband, as many as for `passband`
 * @return one interval, two for a bandpass
 * Raises std::invalid_argument as `passband` does.
 */
std::vector<Interval> stopband(Band band, const std::vector<double> &edges);

/**
 * Where the prototype's zero frequency ends up: 0, 1 (highpass), the centre (bandpass), and
 * 0 for a bandstop, which has the same level at 1.
 * Raises std::invalid_argument as `passband` does.
 */
double reference_frequency(Band band, const std::vector<double> &cutoffs);

/**
 * The level at the reference frequency of a filter whose passband peaks at 0 dB: 0, except for a
 * chebyshev-1 of even order, where it is the bottom of the ripple, as T_n(0)^2 is 1 for even n in
 * its prototype's
 * |H|^2 = 1 / (1 + e^2 T_n^2).
 * Source: Parks & Burrus, Digital Filter Design, chapter 7.
 * @param order      of the lowpass prototype
 * @param ripple_db  of a chebyshev-1, positive; the other families ignore it
 */
double reference_level(Family family, std::size_t order, double ripple_db);

/** Levels in dB at the usual frequencies of interest. */
struct Levels {
  double dc;                   /**< at 0 */
  double nyquist;              /**< at 1 */
  double reference;            /**< at the reference frequency */
  double centre;               /**< at the band centre; NaN without two cutoffs */
  std::vector<double> cutoffs; /**< at each cutoff */
};

/**
 * Cost: proportional to n. Accuracy: that of `level_db`.
 * Raises std::invalid_argument as `passband` does.
 */
Levels levels(const Roots &filter, Band band, const std::vector<double> &cutoffs);
Levels levels(const Sections &filter, Band band, const std::vector<double> &cutoffs);

}  // namespace analysis

#endif
