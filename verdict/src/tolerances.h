// The limits above which differences count.
#ifndef VERDICT_TOLERANCES_H
#define VERDICT_TOLERANCES_H

namespace verdict {

/** Levels that differ by less count as the same. */
inline constexpr double tolerance_db = 0.01;

/** Levels further below the peak are not compared. */
inline constexpr double audible_db = 120.0;

/** What rounding to single precision may change. */
inline constexpr double float_tolerance_db = 0.1;

/** Peaks between sections may be so far below or above 0 dB in single precision: floats keep their
 *  digits from -758 to 770 dB, and a signal needs room below its peak. */
inline constexpr double float_range_db = 600.0;

}  // namespace verdict

#endif
