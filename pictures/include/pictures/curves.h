// The curves of a filter over frequency: level, phase and group delay.
#ifndef PICTURES_CURVES_H
#define PICTURES_CURVES_H

#include <vector>

#include "pictures/axis.h"
#include "pictures/detail.h"
#include "pictures/drawn_filter.h"

namespace pictures {

/** Points to be joined, or marks of their own; x and y are equally long. Where y is NaN, the curve
 *  is interrupted. */
struct Curve {
  std::vector<double> x, y;

  void add(double across, double up) {
    x.push_back(across);
    y.push_back(up);
  }
};

/**
 * The curves over the part of a frequency axis in Hz that lies between 0 and the Nyquist frequency,
 * ends included; empty if there is no such part. They have points at the angles of all roots, at
 * the cutoffs and half-power points, at 1200 even steps of the axis, and at the frequencies of
 * analysis::grid, so that neither a narrow peak nor a zero is missed. Of the grid's points only those
 * are taken that a picture can show apart: 100,000 for the level, which has points at its extrema
 * besides, and 4000 for the others. Each point costs in proportion to the order.
 * A live curve has half as many even steps, none of the grid's points, and levels within 1e-7 dB.
 */
Curve level_curve(const DrawnFilter &filter, const Axis &frequencies,
                  Detail detail = Detail::full); /**< in dB */

/** In degrees, continuous; interrupted at each zero on the unit circle, where the phase jumps by
 *  180 degrees. Points nearer to such a zero than 1e-12 of its frequency are left out, since
 *  rounding may put them on either side. */
Curve phase_curve(const DrawnFilter &filter, const Axis &frequencies, Detail detail = Detail::full);

/** The group delay in seconds. */
Curve delay_curve(const DrawnFilter &filter, const Axis &frequencies, Detail detail = Detail::full);

/** @return the median of the group delay over 101 even steps of a frequency axis, in seconds. */
double median_delay(const DrawnFilter &filter, const Axis &frequencies,
                    Detail detail = Detail::full);

}  // namespace pictures

#endif
