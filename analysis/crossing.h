/** Where a response crosses a level: the -3 dB points. */
#ifndef ANALYSIS_CROSSING_H
#define ANALYSIS_CROSSING_H

#include "analysis/band.h"
#include "analysis/filter.h"

namespace analysis {

/** 10 log10 2 = 3.0103 dB: what half the power is below all of it. */
inline constexpr double half_power_db = 3.0102999566398120;

/**
 * All frequencies within `range` at which the level crosses `db`, ascending, each refined
 * until two neighbouring doubles enclose it. Between two points of the grid and the extrema
 * between them the level is monotone, so none is missed; a level that is touched and not
 * crossed is none.
 */
std::vector<double> crossings(const Roots &filter, double db, const Interval &range);
std::vector<double> crossings(const Sections &filter, double db, const Interval &range);

/**
 * The outermost crossings of half the power as seen from the passband: from each edge of the
 * passband on outwards, where the level last leaves `reference_db` - 3.0103 dB before it
 * first reaches the stopband; where a ripple of more than 3.01 dB crosses it within the passband,
 * those crossings are not meant.
 * @param cutoffs       one, or for bandpass and bandstop two in ascending order
 * @param reference_db  usually the level at the reference frequency, or the highest in the
 *                      passband
 * @return as many as there are cutoffs, ascending; not a number where there is none
 * Raises std::invalid_argument as `passband` does.
 */
std::vector<double> half_power_points(const Roots &filter, Band band,
                                      const std::vector<double> &cutoffs, double reference_db);
std::vector<double> half_power_points(const Sections &filter, Band band,
                                      const std::vector<double> &cutoffs, double reference_db);

}  // namespace analysis

#endif
