#include "pictures/time_panels.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include <fmt/format.h>

#include "analysis/arrangement.h"
#include "analysis/impulse.h"
#include "analysis/stability.h"
#include "filter_numbers.h"
#include "pictures/ranges.h"
#include "power_label.h"
#include "time_unit.h"

namespace pictures {
namespace {

/** What comes out of one filter. */
struct Response {
  double samplerate; /**< in Hz */
  std::vector<double> values;
  std::size_t shown; /**< samples until it is near its end; all of an unstable one */
  bool is_whole;     /**< whether it comes to that end */
};

struct Length {
  std::size_t samples;
  bool is_whole;
};

// Twice the time in which the slowest pole falls by 60 dB, as many poles together ring longer.
Length length_of(const analysis::Sections &sections) {
  constexpr double most_samples = 2e6, most_work = 5e7, decay = 6.907755;  // ln 1000
  const analysis::Stability stability = analysis::stability(sections);
  const double wanted = 64.0 + (stability.stable ? 2.0 * analysis::ringing_samples(stability)
                                                 : decay / std::log1p(std::fabs(stability.margin)));
  const double most = std::min(most_samples, most_work / static_cast<double>(sections.size()));
  return {static_cast<std::size_t>(std::min(wanted, most)), wanted <= most};
}

// How many samples it takes until all that follow are near the last one.
std::size_t settled_after(const std::vector<double> &values, double end) {
  constexpr double near = 0.005;
  double largest = 0.0;
  for (const double value : values) largest = std::max(largest, std::fabs(value));
  std::size_t count = values.size();
  while (count > 0 && std::fabs(values[count - 1] - end) <= near * largest) --count;
  return count;
}

Response response_of(const DrawnFilter &filter, const Length &length, std::vector<double> values,
                     double end) {
  constexpr double margin = 1.1;
  constexpr std::size_t least = 16;
  Response response{filter.samplerate, std::move(values), length.samples, true};
  if (filter.is_unstable()) return response;
  const std::size_t settled = settled_after(response.values, end);
  response.is_whole = length.is_whole || 2 * settled < length.samples;
  if (!response.is_whole) return response;
  response.shown = std::max(least, static_cast<std::size_t>(margin * static_cast<double>(settled)));
  response.values.resize(std::max(response.shown, length.samples), end);
  return response;
}

/** Of all filters; those without sections have no values. */
struct Responses {
  std::vector<Response> impulse, step;
};

Responses responses_of(const std::vector<DrawnFilter> &filters) {
  Responses all;
  for (const DrawnFilter &filter : filters) {
    if (filter.sections.empty()) {
      for (auto *list : {&all.impulse, &all.step})
        list->push_back({filter.samplerate, {}, 0, true});
      continue;
    }
    const Length length = length_of(filter.sections);
    const auto quiet =
        analysis::arranged(filter.sections, analysis::Structure::direct_2_transposed);
    std::vector<double> impulse = analysis::impulse_response(quiet, length.samples);
    std::vector<double> step(impulse.size());
    std::partial_sum(impulse.begin(), impulse.end(), step.begin());
    const double end = step.back();
    all.impulse.push_back(response_of(filter, length, std::move(impulse), 0.0));
    all.step.push_back(response_of(filter, length, std::move(step), end));
  }
  return all;
}

double seconds_of(const std::vector<Response> &responses) {
  double seconds = 0.0;
  for (const Response &response : responses)
    seconds = std::max(seconds, static_cast<double>(response.shown) / response.samplerate);
  return seconds > 0.0 ? seconds : 1e-3;
}

// One that has come to its end stays there.
Curve curve_of(const Response &response, double seconds, const TimeUnit &unit) {
  Curve curve;
  const std::vector<double> &values = response.values;
  if (values.empty()) return curve;
  const double last = std::floor(seconds * response.samplerate * (1 + 1e-12));
  for (std::size_t i = 0; static_cast<double>(i) <= last; ++i) {
    if (i >= values.size() && !response.is_whole) break;
    curve.add(static_cast<double>(i) / response.samplerate / unit.seconds,
              i < values.size() ? values[i] : values.back());
  }
  return curve;
}

std::string title_of(const std::string &what, const std::vector<DrawnFilter> &filters,
                     const std::vector<Response> &responses, double seconds, const TimeUnit &unit) {
  const bool several = filters.size() > 1;
  std::string title = what;
  if (std::any_of(responses.begin(), responses.end(),
                  [](const Response &response) { return !response.is_whole; }))
    title += fmt::format(", its first {:.3g} {}", seconds / unit.seconds, unit.name);
  const std::string none =
      numbers_of(filters, [](const DrawnFilter &filter) { return filter.sections.empty(); });
  if (none.empty()) return title;
  if (several) return title + "; none of " + none;
  return title +
         (filters.front().is_silent() ? ": none, the filter is silent" : ": none without sections");
}

// Of ten, by which amplitudes are multiplied to have few digits.
int power_of(const std::vector<Curve> &curves) {
  constexpr double smallest = 0.05, largest = 1000.0;
  double most = 0.0;
  for (const Curve &curve : curves)
    for (const double y : curve.y)
      if (std::isfinite(y)) most = std::max(most, std::fabs(y));
  if (most == 0.0 || (most >= smallest && most < largest)) return 0;
  return static_cast<int>(std::ceil(-std::log10(most)));
}

TimePanel panel_of(const std::string &what, const std::vector<DrawnFilter> &filters,
                   const std::vector<Response> &responses) {
  constexpr double most_marks = 64.0;
  const double seconds = seconds_of(responses);
  const TimeUnit unit = time_unit(seconds);
  TimePanel panel;
  panel.title = title_of(what, filters, responses, seconds, unit);
  double samplerate = 0.0;
  for (const Response &response : responses) {
    samplerate = std::max(samplerate, response.samplerate);
    panel.curves.push_back(curve_of(response, seconds, unit));
  }
  panel.shows_samples = seconds * samplerate <= most_marks;
  panel.time = {{0.0, seconds / unit.seconds, Scale::linear},
                TickStyle::magnitudes,
                fmt::format("time in {}", unit.name)};
  const int power = power_of(panel.curves);
  for (Curve &curve : panel.curves)
    for (double &y : curve.y) y *= std::pow(10.0, power);
  panel.amplitude = {range_of(panel.curves), TickStyle::decimal,
                     counted_in_powers("amplitude", power)};
  return panel;
}

}  // namespace

TimePanels time_panels(const std::vector<DrawnFilter> &filters) {
  const Responses responses = responses_of(filters);
  return {panel_of("Impulse response", filters, responses.impulse),
          panel_of("Step response", filters, responses.step)};
}

}  // namespace pictures
