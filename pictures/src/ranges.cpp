#include "pictures/ranges.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace pictures {
namespace {

using designer::Family;
using designer::Response;

constexpr double infinity = std::numeric_limits<double>::infinity();

/** The edges that a filter's passband is looked at by, in Hz. */
struct Edges {
  double low, high;
};

Edges edges(const DrawnFilter &filter) {
  std::vector<double> all = filter.half_power;
  // Cutoffs of a chebyshev-2 lie in its stopband.
  if (filter.family != Family::chebyshev_2 || all.empty())
    all.insert(all.end(), filter.cutoffs.begin(), filter.cutoffs.end());
  // An allpass has none.
  if (all.empty()) return {filter.nyquist() / 100.0, filter.nyquist() / 2.0};
  const auto [low, high] = std::minmax_element(all.begin(), all.end());
  return {*low, *high};
}

bool is_band(const DrawnFilter &filter) {
  return filter.response == Response::bandpass || filter.response == Response::bandstop;
}

// Where one filter is seen as a whole.
Axis surroundings(const DrawnFilter &filter, Scale scale) {
  constexpr double widths = 8.0, least_ratio = 1.0 + 1e-9;
  const Edges at = edges(filter);
  const double top = filter.nyquist();
  const bool logarithmic = scale == Scale::logarithmic;
  const double bottom = logarithmic ? std::min(at.low / 10.0, top / 1000.0) : 0.0;
  const double ratio = at.high / at.low;
  if (!is_band(filter) || ratio < least_ratio) return {bottom, top, scale};
  const double width = at.high - at.low;
  const double low = logarithmic ? at.low / std::pow(ratio, widths) : at.low - widths * width;
  const double high = logarithmic ? at.high * std::pow(ratio, widths) : at.high + widths * width;
  return {std::max(low, bottom), std::min(high, top), scale};
}

// Where the passband of one filter is looked at.
Axis neighbourhood(const DrawnFilter &filter, Scale scale) {
  constexpr double wide = 4.0;
  const bool linear = scale == Scale::linear;
  const Edges at = edges(filter);
  const double width = std::max(at.high - at.low, 1e-9 * at.high);
  const double top = filter.nyquist();
  switch (filter.response) {
    case Response::lowpass: return {0.0, std::min(1.25 * at.high, top), Scale::linear};
    case Response::highpass:
      return {0.8 * at.low, top,
              top > wide * at.low && !linear ? Scale::logarithmic : Scale::linear};
    case Response::bandpass:
      if (at.high > wide * at.low && !linear)
        return {at.low / 1.4, std::min(1.4 * at.high, top), Scale::logarithmic};
      return {std::max(at.low - width / 4, 0.0), std::min(at.high + width / 4, top), Scale::linear};
    case Response::bandstop: break;
  }
  if (at.high > 2 * at.low && !linear)
    return {at.low / 3, std::min(3 * at.high, top), Scale::logarithmic};
  return {std::max(at.low - 0.75 * width, 0.0), std::min(at.high + 0.75 * width, top),
          Scale::linear};
}

double least_edge(const std::vector<DrawnFilter> &filters) {
  double least = infinity;
  for (const DrawnFilter &filter : filters) least = std::min(least, edges(filter).low);
  return least;
}

double least_above_zero(const std::vector<Curve> &curves) {
  double least = infinity;
  for (const Curve &curve : curves)
    for (const double y : curve.y)
      if (y > 0.0) least = std::min(least, y);
  return least;
}

}  // namespace

Axis whole_axis(const std::vector<DrawnFilter> &filters, Scale scale) {
  Axis all = surroundings(filters.front(), scale);
  for (const DrawnFilter &filter : filters) {
    const Axis one = surroundings(filter, scale);
    all.low = std::min(all.low, one.low);
    all.high = std::max(all.high, one.high);
  }
  // A round number is a labelled tick, where there is one nearby.
  if (all.is_logarithmic() && all.high > 100.0 * all.low) all.low = rounded_down(all.low);
  return all;
}

Axis passband_axis(const std::vector<DrawnFilter> &filters, Scale scale) {
  Axis all = neighbourhood(filters.front(), scale);
  double least_high = all.high;
  for (const DrawnFilter &filter : filters) {
    const Axis one = neighbourhood(filter, scale);
    all.low = std::min(all.low, one.low);
    all.high = std::max(all.high, one.high);
    if (one.is_logarithmic()) all.scale = Scale::logarithmic;
    least_high = std::min(least_high, one.high);
  }
  if (scale == Scale::linear) return all;
  // Filters whose bands lie decades apart are seen on a logarithmic axis only.
  if (all.high > 5.0 * least_high || (all.low > 0.0 && all.high > 8.0 * all.low))
    all.scale = Scale::logarithmic;
  if (all.is_logarithmic() && all.low <= 0.0) all.low = least_edge(filters) / 10.0;
  return all;
}

double highest_peak(const std::vector<DrawnFilter> &filters) {
  double top = -infinity;
  for (const DrawnFilter &filter : filters) top = std::max(top, filter.peak_db);
  return top;
}

double usual_floor(const std::vector<DrawnFilter> &filters) {
  double floor = infinity;
  for (const DrawnFilter &filter : filters)
    floor = std::min(floor, filter.peak_db - 1.25 * filter.attenuation.value_or(96.0));
  const double step = rounded_up((highest_peak(filters) - floor) / 8);
  return step * std::floor(floor / step + 0.05);
}

Axis whole_levels(const std::vector<DrawnFilter> &filters, double floor_db) {
  const double top = highest_peak(filters);
  return {floor_db, top + (top - floor_db) * 0.05, Scale::linear};
}

Axis passband_levels(const std::vector<DrawnFilter> &filters) {
  const double top = highest_peak(filters);
  double low = infinity;
  for (const DrawnFilter &filter : filters)
    low = std::min(low, filter.peak_db - (filter.ripple ? 1.6 * *filter.ripple : 4.0));
  return {low, top + 0.08 * (top - low), Scale::linear};
}

Axis range_of(const std::vector<Curve> &curves) {
  double low = infinity;
  double high = -infinity;
  for (const Curve &curve : curves)
    for (const double y : curve.y)
      if (std::isfinite(y)) {
        low = std::min(low, y);
        high = std::max(high, y);
      }
  if (!(low <= high)) return {};
  const double margin = std::max(0.06 * (high - low), 1e-9 * std::fabs(high) + 1e-300);
  return {low - margin, high + margin, Scale::linear};
}

Axis delay_axis(const std::vector<DrawnFilter> &filters, const Axis &frequencies,
                const std::vector<Curve> &delays, Detail detail) {
  constexpr double steep = 25.0, most_ratio = 1e4;
  Axis seconds = range_of(delays);
  double usual = seconds.high;
  for (const DrawnFilter &filter : filters)
    usual = std::min(usual, median_delay(filter, frequencies, detail));
  if (usual > 0.0 && seconds.high > steep * usual) {
    const double least = std::min(least_above_zero(delays) / 1.3, usual / 2.0);
    return {std::max(least, seconds.high / most_ratio), 1.5 * seconds.high, Scale::logarithmic};
  }
  seconds.low = std::min(seconds.low, 0.0);
  seconds.high = std::max(seconds.high, 0.0);
  return seconds;
}

}  // namespace pictures
