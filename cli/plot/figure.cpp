#include "plot/figure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "plot/gnuplot.h"
#include "plot/panel.h"
#include "plot/provenance.h"
#include "plot/ranges.h"
#include "plot/root_panels.h"

namespace cli::plot {
namespace {

constexpr double page_width = 1000;
constexpr double title_height = 40;
constexpr double key_row = 20;

// From the top of the page, below the keys.
constexpr double level_top = 32, level_height = 300;
constexpr double lower_top = level_top + level_height + 78;
constexpr double strip_height = 202, strip_gap = 32;
constexpr double left_edge = 92, right_edge = 975, strip_right = 535;
constexpr double label_distance = 74;
constexpr double circle_left = 690, circle_size = 285;
constexpr double circle_gap = 3 * strip_height + 2 * strip_gap - 2 * circle_size;
constexpr double page_bottom = lower_top + 3 * strip_height + 2 * strip_gap + 58;

bool compares(const Figure &figure) { return figure.traces.size() > 1; }

double key_height(const Figure &figure) {
  const double names = compares(figure) ? static_cast<double>(figure.traces.size()) : 0.0;
  return key_row * (names + 1);
}

double page_height(const Figure &figure) { return title_height + key_height(figure) + page_bottom; }

std::string list_text(const std::vector<double> &frequencies) {
  std::string text;
  for (const double hz : frequencies) text += (text.empty() ? "" : " and ") + frequency_text(hz);
  return text;
}

template <class Get>
std::vector<double> different(const std::vector<Trace> &traces, const Get &get) {
  std::vector<double> all;
  for (const Trace &trace : traces) get(trace, all);
  std::sort(all.begin(), all.end());
  all.erase(std::unique(all.begin(), all.end()), all.end());
  return all;
}

std::vector<double> cutoffs(const std::vector<Trace> &traces) {
  return different(traces, [](const Trace &trace, std::vector<double> &all) {
    all.insert(all.end(), trace.cutoffs.begin(), trace.cutoffs.end());
  });
}

// The levels that were asked for.
std::vector<double> limits(const std::vector<Trace> &traces) {
  return different(traces, [](const Trace &trace, std::vector<double> &all) {
    for (const auto &limit : {trace.ripple, trace.attenuation})
      if (limit) all.push_back(-*limit);
  });
}

std::string cutoff_meaning(const Trace &trace) {
  const bool two = trace.cutoffs.size() == 2;
  if (trace.topology == "chebyshev-2") return two ? "stopband edges" : "stopband edge";
  if (trace.topology == "chebyshev-1") return two ? "passband edges" : "passband edge";
  return two ? "cutoffs" : "cutoff";
}

// The names of the filters, one under the other, and below them what the marks are.
void add_key(Script &out, const Figure &figure) {
  constexpr double left = 26, column = 325;
  double middle = title_height + key_row / 2;
  const Trace &first = figure.traces.front();
  const bool many = compares(figure);
  if (many)
    for (std::size_t i = 0; i < figure.traces.size(); ++i, middle += key_row) {
      out.key_line(left, middle, line_style(i), figure.traces[i].name);
      out.key_symbol(left + 22, middle, half_power_style(i), "");
    }
  out.key_line(left, middle, cutoff_style,
               many ? "cutoffs" : cutoff_meaning(first) + ' ' + list_text(first.cutoffs));
  const bool some_half = std::any_of(figure.traces.begin(), figure.traces.end(),
                                     [](const Trace &t) { return !t.half_power.empty(); });
  if (many && some_half)
    out.key_text(left + column, middle, "symbols on the curves: \u22123 dB from the peak");
  else if (some_half)
    out.key_symbol(left + column, middle, half_power_style(0),
                   "\u22123 dB at " + list_text(first.half_power));
  std::string limit;
  if (many && !limits(figure.traces).empty())
    limit = "ripple and attenuation asked for";
  else if (first.ripple)
    limit = fmt::format("ripple asked for: {} dB", *first.ripple);
  else if (first.attenuation)
    limit = fmt::format("attenuation asked for: {} dB", *first.attenuation);
  if (!limit.empty()) out.key_line(left + 2 * column, middle, limit_style, limit);
}

void mark_cutoffs(Panel &panel, const Figure &figure) {
  for (const double hz : cutoffs(figure.traces)) panel.vertical(hz, cutoff_style);
}

// Ripple that is smaller than the curve is thick is left to the enlarged passband.
void mark_levels(Panel &panel, const Figure &figure, const Axis &levels) {
  for (const double db : limits(figure.traces))
    if (-db > 0.02 * (levels.high - levels.low)) panel.horizontal(db, limit_style);
  for (std::size_t i = 0; i < figure.traces.size(); ++i) {
    const Trace &trace = figure.traces[i];
    Curve points;
    for (const double hz : trace.half_power) {
      points.x.push_back(hz);
      points.y.push_back(level_at(trace, hz));
    }
    panel.points(points, half_power_style(i));
  }
}

Axis range_of(const std::vector<Curve> &curves) {
  double low = std::numeric_limits<double>::infinity();
  double high = -low;
  for (const Curve &curve : curves)
    for (const double y : curve.y)
      if (std::isfinite(y)) {
        low = std::min(low, y);
        high = std::max(high, y);
      }
  if (!(low <= high)) return {};
  const double margin = std::max(0.06 * (high - low), 1e-9 * std::fabs(high) + 1e-300);
  return {low - margin, high + margin, false};
}

/** A unit of time in which delays have few digits. */
struct Unit {
  const char *name;
  double seconds;
};

Unit delay_unit(const Axis &seconds) {
  const double most = std::max(std::fabs(seconds.low), std::fabs(seconds.high));
  if (most >= 1.0) return {"s", 1.0};
  if (most >= 1e-3) return {"ms", 1e-3};
  return {"\u00b5s", 1e-6};
}

Box strip(const Figure &figure, int row) {
  const double top =
      title_height + key_height(figure) + lower_top + row * (strip_height + strip_gap);
  return {left_edge, top, strip_right, top + strip_height};
}

// The numbers of the filters of which something is true.
template <class Test>
std::string numbers_of(const Figure &figure, const Test &test) {
  std::string text;
  for (std::size_t i = 0; i < figure.traces.size(); ++i)
    if (test(figure.traces[i])) text += fmt::format("{}{}", text.empty() ? "" : ", ", i + 1);
  return text;
}

// What one must know to read the levels rightly.
std::string level_title(const Figure &figure) {
  const std::string silent = numbers_of(figure, [](const Trace &t) { return t.silent; });
  const std::string unstable = numbers_of(figure, [](const Trace &t) { return t.outside > 0; });
  std::string text = "Level";
  if (!silent.empty())
    text += compares(figure) ? "; silent, drawn without the gain, which is 0: " + silent
                             : " without the gain, which is 0: the filter is silent";
  if (!unstable.empty())
    text += compares(figure) ? "; unstable: " + unstable
                             : "; the filter is unstable, with poles outside the unit circle";
  return text;
}

void add_levels(Script &out, const Figure &figure) {
  const double top = title_height + key_height(figure) + level_top;
  Panel panel(out, {left_edge, top, right_edge, top + level_height}, level_title(figure),
              figure.frequencies, figure.levels);
  panel.x_ticks(frequency_ticks(figure.frequencies, 18), "frequency in Hz");
  panel.y_ticks(number_ticks(figure.levels, 8), "level in dB", label_distance);
  mark_cutoffs(panel, figure);
  for (std::size_t i = 0; i < figure.traces.size(); ++i)
    panel.curve(level_curve(figure.traces[i], figure.frequencies), line_style(i));
  mark_levels(panel, figure, figure.levels);
  panel.finish();
}

void add_passband(Script &out, const Figure &figure, const Axis &frequencies) {
  const Axis levels = passband_levels(figure.traces);
  Panel panel(out, strip(figure, 0), "Passband enlarged", frequencies, levels);
  panel.x_ticks(frequency_ticks(frequencies, 8), "");
  panel.y_ticks(number_ticks(levels, 6), "level in dB", label_distance);
  mark_cutoffs(panel, figure);
  for (std::size_t i = 0; i < figure.traces.size(); ++i)
    panel.curve(level_curve(figure.traces[i], frequencies), line_style(i));
  mark_levels(panel, figure, levels);
  panel.finish();
}

void add_phase(Script &out, const Figure &figure, const Axis &frequencies) {
  std::vector<Curve> curves;
  for (const Trace &trace : figure.traces) curves.push_back(phase_curve(trace, frequencies));
  const Axis degrees = range_of(curves);
  Panel panel(out, strip(figure, 1), "Phase", frequencies, degrees);
  panel.x_ticks(frequency_ticks(frequencies, 8), "");
  panel.y_ticks(degree_ticks(degrees, 6), "phase in degrees", label_distance);
  mark_cutoffs(panel, figure);
  for (std::size_t i = 0; i < curves.size(); ++i) panel.curve(curves[i], line_style(i));
  panel.finish();
}

// Zero is where a delay begins. Where a peak would leave nothing of the rest, the axis is
// logarithmic.
Axis delay_axis(const Figure &figure, const Axis &frequencies, const std::vector<Curve> &curves) {
  constexpr double steep = 25;
  Axis seconds = range_of(curves);
  double usual = seconds.high;
  for (const Trace &trace : figure.traces)
    usual = std::min(usual, median_delay(trace, frequencies));
  if (usual > 0.0 && seconds.high > steep * usual) return {usual / 5, 1.5 * seconds.high, true};
  seconds.low = std::min(seconds.low, 0.0);
  seconds.high = std::max(seconds.high, 0.0);
  return seconds;
}

void add_delay(Script &out, const Figure &figure, const Axis &frequencies) {
  std::vector<Curve> curves;
  for (const Trace &trace : figure.traces) curves.push_back(delay_curve(trace, frequencies));
  const Axis seconds = delay_axis(figure, frequencies, curves);
  const Unit unit = delay_unit(seconds);
  const auto scaled = [&](double factor) {
    return Axis{seconds.low * factor, seconds.high * factor, seconds.logarithmic};
  };
  const Axis delays = scaled(1 / unit.seconds);
  Panel panel(out, strip(figure, 2), "Group delay", frequencies, delays);
  panel.x_ticks(frequency_ticks(frequencies, 8), "frequency in Hz");
  panel.y_ticks(frequency_ticks(delays, 6), fmt::format("delay in {}", unit.name), label_distance);
  const double rate = figure.traces.front().samplerate;
  if (std::all_of(figure.traces.begin(), figure.traces.end(),
                  [&](const Trace &trace) { return trace.samplerate == rate; }))
    panel.right_ticks(scaled(rate), frequency_ticks(scaled(rate), 6), "delay in samples");
  mark_cutoffs(panel, figure);
  for (std::size_t i = 0; i < curves.size(); ++i) {
    for (double &y : curves[i].y) y /= unit.seconds;
    panel.curve(curves[i], line_style(i));
  }
  panel.finish();
}

}  // namespace

int height(const Figure &figure) {
  return static_cast<int>(std::lround(page_height(figure) * figure.width / page_width));
}

std::string script(const Figure &figure) {
  // An SVG is drawn at its own size: gnuplot places its texts best there.
  const bool png = figure.format == Format::png;
  Script out(page_width, page_height(figure));
  out.begin(png ? "pngcairo" : "svg", png ? figure.width / page_width : 1.0);
  out.title(figure.title, title_height / 2);
  add_key(out, figure);
  add_levels(out, figure);
  const Axis frequencies = passband_axis(figure.traces);
  add_passband(out, figure, frequencies);
  add_phase(out, figure, frequencies);
  add_delay(out, figure, frequencies);
  const double top = strip(figure, 0).top;
  const Box circle{circle_left, top, circle_left + circle_size, top + circle_size};
  add_circle(out, circle, figure.traces);
  const double below = circle.bottom + circle_gap;
  add_poles(out, {circle_left, below, circle_left + circle_size, below + circle_size},
            figure.traces);
  return out.text();
}

std::string picture(const Figure &figure, const std::string &command) {
  const std::string drawn = described(draw(script(figure)), figure.title, command);
  return figure.format == Format::png ? drawn : sized(drawn, figure.width, height(figure));
}

}  // namespace cli::plot
