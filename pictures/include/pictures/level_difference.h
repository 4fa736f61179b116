// How far the levels of two filters are apart, over frequency.
#ifndef PICTURES_LEVEL_DIFFERENCE_H
#define PICTURES_LEVEL_DIFFERENCE_H

#include "pictures/curves.h"
#include "pictures/drawn_filter.h"

namespace pictures {

/**
 * The level of the first filter less that of the second in dB, over the part of a frequency axis in Hz
 * that lies between 0 and the lower of both Nyquist frequencies. It has points where either level has
 * some: at the angles of all roots, cutoffs, half-power points and even steps of the axis. It is
 * interrupted where a level is not finite: at a zero on the unit circle.
 */
Curve level_difference_curve(const DrawnFilter &first, const DrawnFilter &second,
                             const Axis &frequencies, Detail detail = Detail::full);

}  // namespace pictures

#endif
