#include "pictures/figure.h"

#include <algorithm>

#include <fmt/format.h>

#include "pictures/filter_names.h"
#include "pictures/ranges.h"

namespace pictures {
namespace {

std::string usual_title(const std::vector<DrawnFilter> &filters) {
  if (filters.size() == 1) return filters.front().name;
  return fmt::format("{} filters", filters.size());
}

// What of the passband's axis lies within the one asked for; all of it where nothing does.
Axis passband_within(const Axis &passband, const std::optional<Axis> &frequencies) {
  if (!frequencies) return passband;
  Axis common = passband;
  common.low = std::max(passband.low, frequencies->low);
  common.high = std::min(passband.high, frequencies->high);
  if (!(common.low < common.high)) return passband;
  // Zoomed into the passband, it is the same axis.
  if (common.low == frequencies->low && common.high == frequencies->high) return *frequencies;
  return common;
}

}  // namespace

Figure figure_of(const std::vector<DrawnFilter> &filters, const FigureOptions &options) {
  const Axis usual_passband = passband_axis(filters, options.scale);
  const Axis passband = passband_within(usual_passband, options.frequencies);
  const Axis whole = options.frequencies.value_or(whole_axis(filters, options.scale));
  const Axis detail = options.frequencies.value_or(usual_passband);
  const TimePanels over_time = time_panels(filters, {.detail = options.detail});
  const double floor_db = options.floor_db ? *options.floor_db : usual_floor(filters);
  return {figure_title(options.title ? *options.title : usual_title(filters)),
          figure_key(filters),
          level_panel(filters, whole, whole_levels(filters, floor_db), options.detail),
          passband_panel(filters, passband, options.detail),
          phase_panel(filters, detail, PhaseForm::continuous, options.detail),
          delay_panel(filters, detail, options.detail),
          zeros_and_poles_panel(filters),
          poles_panel(filters),
          over_time.impulse,
          over_time.step};
}

}  // namespace pictures
