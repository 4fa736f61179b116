/** Where a response crosses a level: the -3 dB points. */
#ifndef ANALYSIS_CROSSING_H
#define ANALYSIS_CROSSING_H

#include "analysis/band.h"
#include "analysis/filter.h"

namespace analysis {

/** 10 log10 2 = 3.0103 dB: how far half the power lies below full power. */
inline constexpr double half_power_db = 3.0102999566398120;

/**
 * All frequencies within `range` at which the level crosses `db`, each refined until two
 * neighbouring doubles enclose it. Between two points of the grid and the extrema
 * between them the level is monotone, so that two crossings beside an extremum are found as well.
 *
 * Cost: proportional to n^2, and to n for each crossing.
 * Accuracy: the level at what is returned is within 1e-11 dB of `db`; how far that is in w depends
 * on the slope.
 * @param range  ascending within 0..1
 * @return ascending; empty where the level is never crossed
 */
std::vector<double> crossings(const Roots &filter, double db, const Interval &range);
std::vector<double> crossings(const Sections &filter, double db, const Interval &range);

/**
 * Where the level last leaves `reference_db` - 3.0103 dB on the way from the passband to the
 * stopband: the last crossing of a lowpass, the first of a highpass, the outermost of a
 * bandpass, and of a bandstop those next to the centre. Crossings within a passband whose ripple
 * exceeds 3.01 dB are thus passed over.
 * @param cutoffs       one, or for bandpass and bandstop two in ascending order
 * @param reference_db  usually the level at the reference frequency, or the highest in the
 *                      passband
 *
 * Cost: that of `crossings`.
 * Accuracy: 1e-9 relative, against the inverse of the families' square laws; for sections of a
 * high order, that of the sections.
 * @return as many as there are cutoffs, ascending; NaN where the level is not crossed
 * Raises std::invalid_argument as `passband` does.
 */
std::vector<double> half_power_points(const Roots &filter, Band band,
                                      const std::vector<double> &cutoffs, double reference_db);
std::vector<double> half_power_points(const Sections &filter, Band band,
                                      const std::vector<double> &cutoffs, double reference_db);

}  // namespace analysis

#endif
