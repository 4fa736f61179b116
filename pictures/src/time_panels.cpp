#include "pictures/time_panels.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include <fmt/format.h>

#include "analysis/arrangement.h"
#include "analysis/impulse.h"
#include "analysis/quick_impulse.h"
#include "analysis/stability.h"
#include "filter_numbers.h"
#include "pictures/ranges.h"
#include "pictures/thinning.h"
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
Length length_of(const analysis::Sections &sections, Detail detail) {
  constexpr double decay = 6.907755;  // ln 1000
  const bool live = detail == Detail::live;
  const double most_samples = live ? 32768 : 2e6, most_work = live ? 2e6 : 5e7;
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

std::vector<double> impulse_of(const analysis::Sections &sections, std::size_t count,
                               Detail detail) {
  if (detail == Detail::live)
    return quick_impulse_response(analysis::quickly_arranged(sections), count);
  return impulse_response(analysis::arranged(sections, analysis::Structure::direct_2_transposed),
                          count);
}

Responses responses_of(const std::vector<DrawnFilter> &filters, Detail detail) {
  Responses all;
  for (const DrawnFilter &filter : filters) {
    if (filter.sections.empty()) {
      for (auto *list : {&all.impulse, &all.step})
        list->push_back({filter.samplerate, {}, 0, true});
      continue;
    }
    const Length length = length_of(filter.sections, detail);
    std::vector<double> impulse = impulse_of(filter.sections, length.samples, detail);
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

/** Where samples are drawn that follow the last one computed. */
enum class Tail { each_sample, end_only };

// One that has come to its end stays there.
Curve curve_of(const Response &response, const Axis &seconds, const TimeUnit &unit, Tail tail) {
  Curve curve;
  const std::vector<double> &values = response.values;
  if (values.empty()) return curve;
  const auto count = static_cast<double>(values.size());
  const double last = std::floor(seconds.high * response.samplerate * (1 + 1e-12));
  for (double i = std::floor(seconds.low * response.samplerate); i <= last; ++i) {
    if (i >= count && !response.is_whole) break;
    curve.add(i / response.samplerate / unit.seconds,
              i < count ? values[static_cast<std::size_t>(i)] : values.back());
    if (i >= count && tail == Tail::end_only && i < last) i = last - 1;
  }
  return curve;
}

// Until when responses are known that go on within the axis; none if there are none.
std::optional<double> known_until(const std::vector<Response> &responses, const Axis &seconds) {
  std::optional<double> until;
  for (const Response &response : responses) {
    const double end = static_cast<double>(response.values.size()) / response.samplerate;
    if (!response.is_whole && end < seconds.high) until = std::min(end, until.value_or(end));
  }
  return until;
}

std::string title_of(const std::string &what, const std::vector<DrawnFilter> &filters,
                     const std::optional<double> &until, const TimeUnit &unit) {
  const bool several = filters.size() > 1;
  std::string title = what;
  if (until) title += fmt::format(", its first {:.3g} {}", *until / unit.seconds, unit.name);
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

// As many as a screen shows.
Curve fit_for_a_screen(const Curve &curve, const TimePanel &panel) {
  constexpr double columns = 400, rows = 400;
  if (static_cast<double>(curve.x.size()) <= 2 * columns) return curve;
  return thinned(curve, {panel.time.axis, panel.amplitude.axis, columns, rows});
}

TimePanel panel_of(const std::string &what, const std::vector<DrawnFilter> &filters,
                   const std::vector<Response> &responses, const TimeOptions &options) {
  constexpr double most_marks = 64.0;
  const Axis seconds = options.seconds.value_or(Axis{0.0, seconds_of(responses), Scale::linear});
  const TimeUnit unit = time_unit(seconds.high);
  TimePanel panel;
  // Responses that are cut off end together with the axis that they made.
  const bool some_are_cut =
      std::any_of(responses.begin(), responses.end(),
                  [](const Response &response) { return !response.is_whole; });
  const std::optional<double> until = options.seconds ? known_until(responses, seconds)
                                      : some_are_cut  ? std::optional(seconds.high)
                                                      : std::nullopt;
  panel.title = title_of(what, filters, until, unit);
  double samplerate = 0.0;
  for (const Response &response : responses) {
    samplerate = std::max(samplerate, response.samplerate);
    panel.curves.push_back(
        curve_of(response, seconds, unit, options.seconds ? Tail::end_only : Tail::each_sample));
  }
  panel.shows_samples = (seconds.high - seconds.low) * samplerate <= most_marks;
  panel.time = {{seconds.low / unit.seconds, seconds.high / unit.seconds, Scale::linear},
                TickStyle::magnitudes,
                fmt::format("time in {}", unit.name)};
  const int power = power_of(panel.curves);
  const double scale = std::pow(10.0, power);
  for (Curve &curve : panel.curves)
    for (double &y : curve.y) y *= scale;
  panel.amplitude = {range_of(panel.curves), TickStyle::decimal,
                     counted_in_powers("amplitude", power)};
  if (options.detail == Detail::live)
    for (Curve &curve : panel.curves) curve = fit_for_a_screen(curve, panel);
  return panel;
}

TimePanel impulse_panel_of(const std::vector<DrawnFilter> &filters, const Responses &responses,
                           const TimeOptions &options) {
  return panel_of("Impulse response", filters, responses.impulse, options);
}

TimePanel step_panel_of(const std::vector<DrawnFilter> &filters, const Responses &responses,
                        const TimeOptions &options) {
  return panel_of("Step response", filters, responses.step, options);
}

}  // namespace

TimePanels time_panels(const std::vector<DrawnFilter> &filters, const TimeOptions &options) {
  const Responses responses = responses_of(filters, options.detail);
  return {impulse_panel_of(filters, responses, options),
          step_panel_of(filters, responses, options)};
}

TimePanel impulse_panel(const std::vector<DrawnFilter> &filters, const TimeOptions &options) {
  return impulse_panel_of(filters, responses_of(filters, options.detail), options);
}

TimePanel step_panel(const std::vector<DrawnFilter> &filters, const TimeOptions &options) {
  return step_panel_of(filters, responses_of(filters, options.detail), options);
}

}  // namespace pictures
