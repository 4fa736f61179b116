// The ranges of frequency, level and delay that show filters well. All functions take one or more
// filters.
#ifndef PICTURES_RANGES_H
#define PICTURES_RANGES_H

#include <vector>

#include "pictures/axis.h"
#include "pictures/curves.h"
#include "pictures/drawn_filter.h"

namespace pictures {

/** @return an axis in Hz that shows all filters: up to half the highest sample rate, from 0 Hz or, on
 *  a logarithmic one, from at least a decade below the lowest edge. Of a narrow band it shows eight
 *  times its width on either side, which leaves it wide enough to be seen. */
Axis whole_axis(const std::vector<DrawnFilter> &filters, Scale scale);

/** @return an axis in Hz for the passbands and their edges; for a bandstop, the edges of the gap.
 *  Where `scale` allows, it is logarithmic if the bands are wide or lie far apart. */
Axis passband_axis(const std::vector<DrawnFilter> &filters, Scale scale);

/** @return the highest level of all filters, in dB. */
double highest_peak(const std::vector<DrawnFilter> &filters);

/** @return a floor that shows the stopband, in dB: a round number near 5/4 of the attenuation asked
 *  for below the peak, or of 96 dB where none was; of all filters the lowest. */
double usual_floor(const std::vector<DrawnFilter> &filters);

/** @return levels in dB from a floor, which is below the highest peak, to a little above that. */
Axis whole_levels(const std::vector<DrawnFilter> &filters, double floor_db);

/** @return levels in dB of the passband: its ripple, or down to 4 dB below the peak. */
Axis passband_levels(const std::vector<DrawnFilter> &filters);

/** @return an axis a little longer than all finite y of these curves; from 0 to 1 where there is no
 *  finite one. */
Axis range_of(const std::vector<Curve> &curves);

/** @param delays  the curves of the group delay over `frequencies`, in seconds
 *  @return an axis that begins with 0, or is logarithmic where a peak would leave nothing of the
 *  rest: where it is more than 25 times as high as the least of the median delays. It then goes
 *  down to the least delay, but by no more than four decades. */
Axis delay_axis(const std::vector<DrawnFilter> &filters, const Axis &frequencies,
                const std::vector<Curve> &delays, Detail detail = Detail::full);

}  // namespace pictures

#endif
