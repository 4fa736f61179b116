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
constexpr int grid_parts = 4;
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

// Counts poles outside the circle; on it to the last digit, there is no response.
void check_poles(Trace &trace, const std::string &name) {
  constexpr double last_digit = 4e-16;
  for (const analysis::Complex &pole : trace.roots.poles) {
    const double inside = analysis::distance_inside(pole);
    if (std::fabs(inside) <= last_digit)
      throw Refusal(fmt::format("{} has a pole on the unit circle: it has no response", name));
    if (inside < 0.0) ++trace.outside;
  }
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
  const std::vector<double> grid = analysis::grid(trace.roots, range);
  std::vector<double> list;
  // The grid has a point on each side of an extremum; a quarter of its step finds the top.
  for (std::size_t i = 0; i + 1 < grid.size(); ++i)
    for (int part = 0; part < grid_parts; ++part)
      list.push_back(grid[i] + (grid[i + 1] - grid[i]) * part / grid_parts);
  list.push_back(range.high);
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

// The frequencies within the curve at which the phase jumps, in Hz, ascending.
std::vector<double> jumps(const Trace &trace, const Curve &phase) {
  std::vector<double> list;
  for (const analysis::Complex &zero : trace.roots.zeros)
    if (std::fabs(analysis::distance_inside(zero)) <= analysis::on_circle)
      list.push_back(std::fabs(std::arg(zero)) / std::numbers::pi * nyquist(trace));
  std::sort(list.begin(), list.end());
  list.erase(std::unique(list.begin(), list.end()), list.end());
  std::erase_if(list, [&](double hz) {
    return phase.x.empty() || hz <= phase.x.front() || hz >= phase.x.back();
  });
  return list;
}

}  // namespace

double nyquist(const Trace &trace) { return trace.samplerate / 2; }

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
  check_poles(out, name);
  if (out.topology == "chebyshev-1") out.ripple = setting(design, "passband_ripple");
  if (out.topology == "chebyshev-2") out.attenuation = setting(design, "stopband_attenuation");
  std::vector<double> cutoffs = filter.cutoffs;
  std::sort(cutoffs.begin(), cutoffs.end());
  if (!std::isfinite(highest_level(out))) make_audible(out);
  out.peak_db = highest_level(out);
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
  const std::vector<double> breaks = jumps(trace, whole);
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

}  // namespace cli::plot
