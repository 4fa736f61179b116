// What the panels over frequency show: level, passband, phase and group delay.
#ifndef PICTURES_RESPONSE_PANELS_H
#define PICTURES_RESPONSE_PANELS_H

#include <optional>
#include <string>
#include <vector>

#include "pictures/curves.h"
#include "pictures/drawn_filter.h"
#include "pictures/labelled_axis.h"

namespace pictures {

/** How a phase is drawn: with all its turns, or from -180 to 180 degrees and interrupted between. */
enum class PhaseForm { continuous, wrapped };

/** All numbers are in the units of its axes. */
struct ResponsePanel {
  std::string title;
  LabelledAxis frequency;
  LabelledAxis value;
  std::optional<LabelledAxis> right; /**< the values in another unit, over the same range */
  std::vector<double> cutoffs;       /**< of all filters, within the axis, ascending */
  std::vector<double> limits;        /**< values asked for, within the axis, ascending */
  std::vector<Curve> curves;         /**< one for each filter, in their order */
  std::vector<Curve>
      half_power; /**< marks, one list for each filter, some of which may lie outside; empty except for levels */
};

/** @return the level over all frequencies, with a title that says which filters are silent or
 *  unstable. */
ResponsePanel level_panel(const std::vector<DrawnFilter> &filters, const Axis &frequencies,
                          const Axis &levels, Detail detail = Detail::full);

ResponsePanel passband_panel(const std::vector<DrawnFilter> &filters, const Axis &frequencies,
                             Detail detail = Detail::full);

ResponsePanel phase_panel(const std::vector<DrawnFilter> &filters, const Axis &frequencies,
                          PhaseForm form = PhaseForm::continuous, Detail detail = Detail::full);

/** @return the group delay in s, ms, µs or ns; and in samples on the right where all filters have the
 *  same sample rate. */
ResponsePanel delay_panel(const std::vector<DrawnFilter> &filters, const Axis &frequencies,
                          Detail detail = Detail::full);

/** @return the levels that were asked for, ripple and attenuation of all filters, in dB and
 *  negative; ascending. */
std::vector<double> levels_asked_for(const std::vector<DrawnFilter> &filters);

}  // namespace pictures

#endif
