#include "pictures/figure_key.h"

#include <algorithm>

#include <fmt/format.h>

#include "pictures/filter_names.h"
#include "pictures/frequency_text.h"
#include "pictures/response_panels.h"

namespace pictures {
namespace {

constexpr int digits_asked_for = 7, digits_found = 5;

std::string cutoff_meaning(const DrawnFilter &filter) {
  const std::string end = filter.cutoffs.size() == 2 ? "s" : "";
  switch (filter.family) {
    case designer::Family::chebyshev_1: return "passband edge" + end;
    case designer::Family::chebyshev_2: return "stopband edge" + end;
    case designer::Family::butterworth: break;
  }
  return "cutoff" + end;
}

FigureKey key_of(const DrawnFilter &filter) {
  FigureKey key;
  if (!filter.cutoffs.empty())
    key.cutoffs = cutoff_meaning(filter) + ' ' + frequencies_text(filter.cutoffs, digits_asked_for);
  if (!filter.half_power.empty())
    key.half_power = "\u22123 dB at " + frequencies_text(filter.half_power, digits_found);
  if (filter.ripple) key.limits = fmt::format("ripple asked for: {} dB", *filter.ripple);
  if (filter.attenuation)
    key.limits = fmt::format("attenuation asked for: {} dB", *filter.attenuation);
  return key;
}

}  // namespace

FigureKey figure_key(const std::vector<DrawnFilter> &filters) {
  if (filters.size() == 1) return key_of(filters.front());
  FigureKey key;
  for (const DrawnFilter &filter : filters)
    key.names.push_back(numbered_name(key.names.size() + 1, filter.name));
  const auto any_has = [&](std::vector<double> DrawnFilter::*places) {
    return std::any_of(filters.begin(), filters.end(),
                       [&](const DrawnFilter &filter) { return !(filter.*places).empty(); });
  };
  if (any_has(&DrawnFilter::cutoffs)) key.cutoffs = "cutoffs";
  if (any_has(&DrawnFilter::half_power))
    key.half_power = "symbols on the curves: \u22123 dB from the peak";
  if (!levels_asked_for(filters).empty()) key.limits = "ripple and attenuation asked for";
  return key;
}

}  // namespace pictures
