// The ranges of frequency and level that show filters well.
#ifndef VELTANE_CLI_PLOT_RANGES_H
#define VELTANE_CLI_PLOT_RANGES_H

#include <vector>

#include "plot/axis.h"
#include "plot/series.h"

namespace cli::plot {

/** @return a logarithmic axis that shows all filters up to half the highest sample rate. */
Axis whole_axis(const std::vector<Trace> &traces);

/** @return an axis for the passbands and their edges; for a bandstop, the edges of the gap. */
Axis passband_axis(const std::vector<Trace> &traces);

/** @return the highest level of all filters, in dB. */
double highest_peak(const std::vector<Trace> &traces);

/** @return a floor that shows the stopband, in dB: a round number. */
double usual_floor(const std::vector<Trace> &traces);

/** @return levels from a floor, which is below the highest peak, to a little above that. */
Axis whole_levels(const std::vector<Trace> &traces, double floor);

/** @return levels of the passband: its ripple, or down to 4 dB below the peak. */
Axis passband_levels(const std::vector<Trace> &traces);

}  // namespace cli::plot

#endif
