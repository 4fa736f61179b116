/** The highest and the lowest level within a range: the ripple and attenuation reached. */
#ifndef ANALYSIS_EXTREMES_H
#define ANALYSIS_EXTREMES_H

#include "analysis/band.h"
#include "analysis/filter.h"

namespace analysis {

/** A level and where it is. */
struct Peak {
  double db;
  double w;
};

struct Extremes {
  Peak highest;
  Peak lowest; /**< far below everything, or minus infinity, at a zero on the circle */
};

/**
 * The extremes over all ranges. Each lies at an end of a range, at a zero or a pole, or where
 * the slope of the level changes its sign; that place is found between two points of the
 * grid and refined until the level on both sides of it is the same to within 1e-13 dB.
 *
 * Cost: proportional to n^2.
 * Accuracy: no level of a dense walk is further out by more than 1e-10 dB; the ripple's top and the
 * stopband's are what the design promises within 2e-9 dB, and within 2e-7 dB for orders of 200,
 * whose roots as doubles hold no more.
 * @param ranges  at least one; each ascends within 0..1, and may be a single point
 * Raises std::invalid_argument if there is no range, or one is not of this form.
 */
Extremes extremes(const Roots &filter, const std::vector<Interval> &ranges);
Extremes extremes(const Sections &filter, const std::vector<Interval> &ranges);

/** The ripple reached in dB: highest minus lowest level over the passband. As `extremes`. */
double ripple_reached(const Roots &filter, const std::vector<Interval> &passband);
double ripple_reached(const Sections &filter, const std::vector<Interval> &passband);

/** The attenuation reached in dB, relative to a level: `reference_db` minus the highest level
 *  over the stopband. As `extremes`. */
double attenuation_reached(const Roots &filter, const std::vector<Interval> &stopband,
                           double reference_db);
double attenuation_reached(const Sections &filter, const std::vector<Interval> &stopband,
                           double reference_db);

}  // namespace analysis

#endif
