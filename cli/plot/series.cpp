#include "plot/series.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include <fmt/format.h>

#include "analysis/crossing.h"
#include "analysis/extremes.h"
#include "analysis/grid.h"
#include "analysis/phase.h"
#include "analysis/response.h"
#include "analysis/stability.h"
#include "published.h"

namespace cli::plot {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr int even_steps = 600;
constexpr double same_root = 1e-11;

analysis::Band band_of(const std::string &response, const std::string &name) {
  if (response == "lowpass") return analysis::Band::lowpass;
  if (response == "highpass") return analysis::Band::highpass;
  if (response == "bandpass") return analysis::Band::bandpass;
  if (response == "bandstop") return analysis::Band::bandstop;
  throw Refusal(
      fmt::format("{} has the response '{}'; it is one of lowpass, highpass, bandpass, bandstop",
                  name, response));
}

bool is_finite(const analysis::Complex &root) {
  return std::isfinite(root.real()) && std::isfinite(root.imag());
}

void check_finite(const Trace &trace, const std::string &name) {
  bool finite = std::isfinite(trace.roots.gain);
  for (const auto *roots : {&trace.roots.zeros, &trace.roots.poles})
    finite = finite && std::all_of(roots->begin(), roots->end(), is_finite);
  for (const analysis::Section &s : trace.sections)
    for (const double value : {s.b0, s.b1, s.b2, s.a1, s.a2})
      finite = finite && std::isfinite(value);
  if (!finite)
    throw Refusal(fmt::format("{} has numbers that are not finite: it has no response", name));
}

std::optional<double> setting(const Design &design, const std::string &wanted) {
  for (const auto &[name, values] : design.settings) {
    if (name != wanted || values.empty()) continue;
    if (const auto *number = std::get_if<double>(&values.front())) return *number;
    if (const auto *whole = std::get_if<t_long>(&values.front()))
      return static_cast<double>(*whole);
  }
  return std::nullopt;
}

double nyquist(const Trace &trace) { return trace.samplerate / 2; }

double level(const Trace &trace, double w) {
  return trace.shift_db +
         (trace.sections.empty() ? level_db(trace.roots, w) : level_db(trace.sections, w));
}

double highest_level(const Trace &trace) {
  const std::vector<analysis::Interval> all{{0.0, 1.0}};
  return trace.shift_db + (trace.sections.empty() ? extremes(trace.roots, all).highest.db
                                                  : extremes(trace.sections, all).highest.db);
}

std::vector<double> half_power(const Trace &trace, const std::vector<double> &cutoffs) {
  // Two equal cutoffs have no band between them.
  if (cutoffs.size() == 2 && !(cutoffs[0] < cutoffs[1])) return {};
  std::vector<double> points =
      trace.sections.empty()
          ? half_power_points(trace.roots, trace.band, cutoffs, trace.peak_db - trace.shift_db)
          : half_power_points(trace.sections, trace.band, cutoffs, trace.peak_db);
  std::erase_if(points, [](double w) { return std::isnan(w); });
  for (double &w : points) w *= nyquist(trace);
  return points;
}

// A silent filter keeps its shape, whose level may be beyond the range of doubles.
void make_audible(Trace &trace) {
  trace.sections.clear();
  trace.roots.gain = 1.0;
  trace.shift_db = -highest_level(trace);
  trace.silent = true;
}

// The frequencies of a curve as fractions of the Nyquist frequency, ascending.
std::vector<double> points(const Trace &trace, const Axis &axis) {
  const double high = std::min(axis.high, nyquist(trace));
  if (!(axis.low < high)) return {};
  const analysis::Interval range{axis.low / nyquist(trace), high / nyquist(trace)};
  std::vector<double> list = analysis::grid(trace.roots, range);
  for (int i = 0; i <= even_steps; ++i)
    list.push_back(value_at(axis, static_cast<double>(i) / even_steps) / nyquist(trace));
  for (const auto *marks : {&trace.cutoffs, &trace.half_power})
    for (const double hz : *marks) list.push_back(hz / nyquist(trace));
  std::erase_if(list, [&](double w) { return w < range.low || w > range.high; });
  std::sort(list.begin(), list.end());
  list.erase(std::unique(list.begin(), list.end()), list.end());
  return list;
}

template <class Function>
Curve curve(const Trace &trace, const Axis &axis, const Function &value) {
  Curve drawn;
  for (const double w : points(trace, axis)) {
    drawn.x.push_back(w * nyquist(trace));
    drawn.y.push_back(value(w));
  }
  return drawn;
}

// The frequencies at which the phase jumps, in Hz.
std::vector<double> jumps(const Trace &trace) {
  std::vector<double> list;
  for (const analysis::Complex &zero : trace.roots.zeros)
    if (std::fabs(analysis::distance_inside(zero)) <= analysis::on_circle)
      list.push_back(std::fabs(std::arg(zero)) / std::numbers::pi * nyquist(trace));
  std::sort(list.begin(), list.end());
  return list;
}

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

Trace trace(const Design &design, const std::string &name) {
  const Published filter = published(design);
  Trace out{};
  out.topology = filter.topology;
  out.band = band_of(filter.response, name);
  out.samplerate = filter.samplerate;
  for (const auto &s : filter.sections) out.sections.push_back({s[0], s[1], s[2], s[3], s[4]});
  if (filter.gain)
    out.roots = {filter.zeros, filter.poles, *filter.gain};
  else if (!out.sections.empty())
    out.roots = roots_of(out.sections);
  if (out.roots.poles.empty())
    throw Refusal(fmt::format(
        "{} has neither zeros and poles nor sections to draw; design it with --zpk-output on",
        name));
  check_finite(out, name);
  if (out.topology == "chebyshev-1") out.ripple = setting(design, "passband_ripple");
  if (out.topology == "chebyshev-2") out.attenuation = setting(design, "stopband_attenuation");
  std::vector<double> cutoffs = filter.cutoffs;
  std::sort(cutoffs.begin(), cutoffs.end());
  if (!std::isfinite(highest_level(out))) make_audible(out);
  out.peak_db = highest_level(out);
  if (!std::isfinite(out.peak_db))
    throw Refusal(fmt::format("{} has a pole on the unit circle: it has no response", name));
  out.half_power = half_power(out, cutoffs);
  for (const double w : cutoffs) out.cutoffs.push_back(w * nyquist(out));
  return out;
}

double level_at(const Trace &trace, double hz) { return level(trace, hz / nyquist(trace)); }

Curve level_curve(const Trace &trace, const Axis &axis) {
  return curve(trace, axis, [&](double w) { return level(trace, w); });
}

Curve phase_curve(const Trace &trace, const Axis &axis) {
  const Curve whole = curve(trace, axis, [&](double w) {
    return unwrapped_phase(trace.roots, w) * 180.0 / std::numbers::pi;
  });
  // At the zero itself either side may be what rounding finds: it is left out.
  constexpr double slack = 1e-12;
  const std::vector<double> breaks = jumps(trace);
  auto next = breaks.begin();
  Curve parts;
  for (std::size_t i = 0; i < whole.x.size(); ++i) {
    const double hz = whole.x[i];
    bool at_break = false;
    for (; next != breaks.end() && *next * (1 - slack) <= hz; ++next) {
      parts.x.push_back(*next);
      parts.y.push_back(nan);
      at_break = hz <= *next * (1 + slack);
    }
    if (at_break) continue;
    parts.x.push_back(hz);
    parts.y.push_back(whole.y[i]);
  }
  return parts;
}

Curve delay_curve(const Trace &trace, const Axis &axis) {
  return curve(trace, axis,
               [&](double w) { return group_delay(trace.roots, w) / trace.samplerate; });
}

double median_delay(const Trace &trace, const Axis &axis) {
  constexpr std::size_t count = 101;
  std::vector<double> delays;
  for (std::size_t i = 0; i < count; ++i) {
    const double hz = value_at(axis, static_cast<double>(i) / (count - 1));
    delays.push_back(group_delay(trace.roots, std::min(hz / nyquist(trace), 1.0)) /
                     trace.samplerate);
  }
  std::nth_element(delays.begin(), delays.begin() + count / 2, delays.end());
  return delays[count / 2];
}

std::vector<RootMark> root_marks(const std::vector<analysis::Complex> &roots) {
  std::vector<RootMark> marks;
  for (const analysis::Complex &root : roots) {
    const auto found = std::find_if(marks.begin(), marks.end(), [&](const RootMark &mark) {
      return std::abs(mark.at - root) <= same_root;
    });
    if (found == marks.end())
      marks.push_back({root, 1});
    else
      ++found->count;
  }
  return marks;
}

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

Axis whole_levels(const std::vector<Trace> &traces) {
  double top = -std::numeric_limits<double>::infinity();
  double floor = std::numeric_limits<double>::infinity();
  for (const Trace &trace : traces) {
    top = std::max(top, trace.peak_db);
    floor = std::min(floor, trace.peak_db - 1.25 * trace.attenuation.value_or(96.0));
  }
  const double step = rounded_up((top - floor) / 8);
  return {step * std::floor(floor / step + 0.05), top + (top - floor) * 0.05, false};
}

Axis passband_levels(const std::vector<Trace> &traces) {
  double top = -std::numeric_limits<double>::infinity();
  double low = std::numeric_limits<double>::infinity();
  for (const Trace &trace : traces) {
    top = std::max(top, trace.peak_db);
    low = std::min(low, trace.peak_db - (trace.ripple ? 1.6 * *trace.ripple : 4.0));
  }
  return {low, top + 0.08 * (top - low), false};
}

}  // namespace cli::plot
