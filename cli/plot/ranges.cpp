#include "plot/ranges.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace cli::plot {
namespace {

/** The edges that a filter's passband is looked at by. */
struct Edges {
  double low, high;
};

Edges edges(const Trace &trace) {
  std::vector<double> all = trace.half_power;
  // Those of a chebyshev-2 lie in its stopband.
  if (trace.topology != "chebyshev-2" || all.empty())
    all.insert(all.end(), trace.cutoffs.begin(), trace.cutoffs.end());
  const auto [low, high] = std::minmax_element(all.begin(), all.end());
  return {*low, *high};
}

// Where the passband of one filter is looked at.
Axis neighbourhood(const Trace &trace) {
  constexpr double wide = 4.0;
  const Edges at = edges(trace);
  const double width = std::max(at.high - at.low, 1e-9 * at.high);
  const double top = nyquist(trace);
  switch (trace.band) {
    case analysis::Band::lowpass: return {0.0, std::min(1.25 * at.high, top), false};
    case analysis::Band::highpass: return {0.8 * at.low, top, top > wide * at.low};
    case analysis::Band::bandpass:
      if (at.high > wide * at.low) return {at.low / 1.4, std::min(1.4 * at.high, top), true};
      return {at.low - width / 4, std::min(at.high + width / 4, top), false};
    case analysis::Band::bandstop: break;
  }
  if (at.high > 2 * at.low) return {at.low / 3, std::min(3 * at.high, top), true};
  return {at.low - 0.75 * width, std::min(at.high + 0.75 * width, top), false};
}

double least_cutoff(const std::vector<Trace> &traces) {
  double least = std::numeric_limits<double>::infinity();
  for (const Trace &trace : traces) least = std::min(least, edges(trace).low);
  return least;
}

}  // namespace

Axis whole_axis(const std::vector<Trace> &traces) {
  double low = std::numeric_limits<double>::infinity();
  double high = 0.0;
  for (const Trace &trace : traces) {
    low = std::min({low, edges(trace).low / 10.0, nyquist(trace) / 1000.0});
    high = std::max(high, nyquist(trace));
  }
  return {rounded_down(low), high, true};
}

Axis passband_axis(const std::vector<Trace> &traces) {
  Axis all = neighbourhood(traces.front());
  double least_high = all.high;
  for (const Trace &trace : traces) {
    const Axis one = neighbourhood(trace);
    all.low = std::min(all.low, one.low);
    all.high = std::max(all.high, one.high);
    all.logarithmic = all.logarithmic || one.logarithmic;
    least_high = std::min(least_high, one.high);
  }
  // Filters whose bands lie decades apart are seen on a logarithmic axis only.
  if (all.high > 5.0 * least_high || (all.low > 0.0 && all.high > 8.0 * all.low))
    all.logarithmic = true;
  if (all.logarithmic && all.low <= 0.0) all.low = least_cutoff(traces) / 10.0;
  return all;
}

double highest_peak(const std::vector<Trace> &traces) {
  double top = -std::numeric_limits<double>::infinity();
  for (const Trace &trace : traces) top = std::max(top, trace.peak_db);
  return top;
}

double usual_floor(const std::vector<Trace> &traces) {
  double floor = std::numeric_limits<double>::infinity();
  for (const Trace &trace : traces)
    floor = std::min(floor, trace.peak_db - 1.25 * trace.attenuation.value_or(96.0));
  const double step = rounded_up((highest_peak(traces) - floor) / 8);
  return step * std::floor(floor / step + 0.05);
}

Axis whole_levels(const std::vector<Trace> &traces, double floor) {
  const double top = highest_peak(traces);
  return {floor, top + (top - floor) * 0.05, false};
}

Axis passband_levels(const std::vector<Trace> &traces) {
  const double top = highest_peak(traces);
  double low = std::numeric_limits<double>::infinity();
  for (const Trace &trace : traces)
    low = std::min(low, trace.peak_db - (trace.ripple ? 1.6 * *trace.ripple : 4.0));
  return {low, top + 0.08 * (top - low), false};
}

}  // namespace cli::plot
