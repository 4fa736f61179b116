#include "pictures/figure.h"

#include <fmt/format.h>

#include "pictures/filter_names.h"
#include "pictures/ranges.h"

namespace pictures {
namespace {

std::string usual_title(const std::vector<DrawnFilter> &filters) {
  if (filters.size() == 1) return filters.front().name;
  return fmt::format("{} filters", filters.size());
}

}  // namespace

Figure figure_of(const std::vector<DrawnFilter> &filters, const FigureOptions &options) {
  const Axis passband = passband_axis(filters);
  const TimePanels over_time = time_panels(filters);
  const double floor_db = options.floor_db ? *options.floor_db : usual_floor(filters);
  return {figure_title(options.title ? *options.title : usual_title(filters)),
          figure_key(filters),
          level_panel(filters, options.frequencies ? *options.frequencies : whole_axis(filters),
                      whole_levels(filters, floor_db)),
          passband_panel(filters, passband),
          phase_panel(filters, passband),
          delay_panel(filters, passband),
          zeros_and_poles_panel(filters),
          poles_panel(filters),
          over_time.impulse,
          over_time.step};
}

}  // namespace pictures
