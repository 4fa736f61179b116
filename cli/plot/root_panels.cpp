#include "plot/root_panels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <set>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "analysis/stability.h"

namespace cli::plot {
namespace {

using analysis::Complex;

/** A view of a part of the z plane, in units in which its numbers are short. */
struct View {
  Square square;
  Complex origin;  // what is 0 on the axes
  int power = 0;   // an axis counts 10^-power

  double unit() const { return std::pow(10.0, power); }
  Complex seen(const Complex &z) const { return (z - origin) * unit(); }
  Axis across() const { return axis(seen(square.centre).real()); }
  Axis upwards() const { return axis(seen(square.centre).imag()); }

 private:
  Axis axis(double middle) const {
    const double reach = square.half * unit();
    return {middle - reach, middle + reach, false};
  }
};

std::string superscript(int number) {
  static const char *const digits[] = {"\u2070", "\u00b9", "\u00b2", "\u00b3", "\u2074",
                                       "\u2075", "\u2076", "\u2077", "\u2078", "\u2079"};
  std::string text;
  for (const char c : std::to_string(number)) text += digits[c - '0'];
  return text;
}

std::string axis_name(const std::string &part, double origin, const View &view) {
  if (view.power == 0) return part;
  const std::string inner =
      origin == 0.0 ? part
                    : fmt::format("({} {} {:.{}f})", part, origin < 0.0 ? "+" : "\u2212",
                                  std::fabs(origin), view.power);
  return fmt::format("{} \u00b7 10{}", inner, superscript(view.power));
}

View view_of(const Square &square) {
  View view{square, {}, 0};
  if (square.half >= 0.02) return view;
  view.power = static_cast<int>(std::ceil(-std::log10(square.half)));
  const double unit = view.unit();
  view.origin = {std::round(square.centre.real() * unit) / unit,
                 std::round(square.centre.imag() * unit) / unit};
  return view;
}

// The part of the unit circle that a view shows, with points enough for a smooth arc.
Curve arc(const View &view) {
  constexpr int steps = 360;
  const double middle = std::arg(view.square.centre);
  const double reach = std::min(std::numbers::pi, 4 * view.square.half);
  Curve out;
  for (int i = -steps / 2; i <= steps / 2; ++i) {
    const double angle = middle + reach * i / (steps / 2);
    const Complex point = view.seen(std::polar(1.0, angle));
    out.x.push_back(point.real());
    out.y.push_back(point.imag());
  }
  return out;
}

bool is_inside(const Complex &z, const Square &square) {
  const Complex from = z - square.centre;
  return std::fabs(from.real()) <= square.half && std::fabs(from.imag()) <= square.half;
}

Curve seen(const std::vector<RootMark> &marks, const View &view) {
  Curve out;
  for (const RootMark &mark : marks) {
    if (!is_inside(mark.at, view.square)) continue;
    const Complex point = view.seen(mark.at);
    out.x.push_back(point.real());
    out.y.push_back(point.imag());
  }
  return out;
}

/** The multiplicities at one place, of all filters. */
struct Multiple {
  Complex at;
  std::set<std::size_t> counts;
};

void collect(std::vector<Multiple> &all, const std::vector<RootMark> &marks, const View &view) {
  const double near = view.square.half / 50;
  for (const RootMark &mark : marks) {
    if (mark.count < 2 || !is_inside(mark.at, view.square)) continue;
    const auto found = std::find_if(all.begin(), all.end(), [&](const Multiple &other) {
      return std::abs(other.at - mark.at) <= near;
    });
    if (found == all.end())
      all.push_back({mark.at, {mark.count}});
    else
      found->counts.insert(mark.count);
  }
}

// Outside the circle, where there are no poles; one under the other.
void label_multiples(Panel &panel, const std::vector<Multiple> &multiples, const View &view) {
  constexpr double distance = 15, line = 12;
  for (const Multiple &multiple : multiples) {
    const Complex point = view.seen(multiple.at);
    const double length = std::abs(multiple.at);
    const Complex away = length > 1e-3 ? multiple.at / length : Complex(0.0, 1.0);
    double up =
        away.imag() * distance + line * (static_cast<double>(multiple.counts.size()) - 1) / 2;
    for (const std::size_t count : multiple.counts) {
      panel.label(point.real(), point.imag(), away.real() * (distance + 3), up,
                  fmt::format("{}", count));
      up -= line;
    }
  }
}

void draw_roots(Panel &panel, const std::vector<Trace> &traces, const View &view) {
  std::vector<Multiple> multiples;
  // The first filter's come last, on top of the others'.
  for (std::size_t i = traces.size(); i-- > 0;) {
    const auto zeros = root_marks(traces[i].roots.zeros);
    const auto poles = root_marks(traces[i].roots.poles);
    panel.points(seen(zeros, view), zero_style(i));
    panel.points(seen(poles, view), pole_style(i));
    collect(multiples, zeros, view);
    collect(multiples, poles, view);
  }
  label_multiples(panel, multiples, view);
}

Panel root_panel(Script &script, const Box &box, const std::string &title, const View &view) {
  Panel panel(script, box, title, view.across(), view.upwards());
  panel.x_ticks(number_ticks(view.across(), 5), axis_name("Re z", view.origin.real(), view));
  panel.y_ticks(number_ticks(view.upwards(), 5), axis_name("Im z", view.origin.imag(), view), 52);
  return panel;
}

// What the symbols are: beside the title, or for several filters below the panel.
void add_symbols(Script &script, const Box &box, const std::vector<Trace> &traces) {
  if (traces.size() == 1) {
    const double middle = box.top - 12;
    script.key_symbol(box.right - 100, middle, zero_style(0), "zero");
    script.key_symbol(box.right - 44, middle, pole_style(0), "pole");
    return;
  }
  constexpr double pitch = 46;
  const double middle = box.bottom + 56;
  double left = box.left + 6;
  for (std::size_t i = 0; i < traces.size(); ++i, left += pitch) {
    script.key_symbol(left, middle, zero_style(i), "");
    script.key_symbol(left + 11, middle, pole_style(i), fmt::format("{}", i + 1));
  }
}

constexpr char circle_style[] = "lw 0.8 lc rgb '#707070' dt solid";

}  // namespace

Square around_poles(const std::vector<Trace> &traces) {
  double left = 2.0, right = -2.0, low = 2.0, high = -2.0;
  const auto include = [&](const Complex &z) {
    left = std::min(left, z.real());
    right = std::max(right, z.real());
    low = std::min(low, z.imag());
    high = std::max(high, z.imag());
  };
  Complex outermost = 0.0;
  double least = std::numeric_limits<double>::infinity();
  for (const Trace &trace : traces)
    for (const Complex &below_or_above : trace.roots.poles) {
      const Complex pole(below_or_above.real(), std::fabs(below_or_above.imag()));
      include(pole);
      const double inside = std::fabs(analysis::distance_inside(pole));
      if (inside >= least) continue;
      least = inside;
      outermost = pole;
    }
  include(std::polar(1.0, std::arg(outermost)));
  const double half = std::max((right - left) / 2, (high - low) / 2);
  return {{(left + right) / 2, (low + high) / 2}, 1.25 * half};
}

void add_circle(Script &script, const Box &box, const std::vector<Trace> &traces) {
  double reach = 1.0;
  for (const Trace &trace : traces)
    for (const auto *roots : {&trace.roots.zeros, &trace.roots.poles})
      for (const Complex &root : *roots)
        reach = std::max({reach, std::fabs(root.real()), std::fabs(root.imag())});
  const View view = view_of({{0.0, 0.0}, 1.35 * reach});
  add_symbols(script, box, traces);
  Panel panel = root_panel(script, box, "Zeros and poles", view);
  panel.curve(arc(view), circle_style);
  draw_roots(panel, traces, view);
  panel.finish();
}

void add_poles(Script &script, const Box &box, const std::vector<Trace> &traces) {
  const View view = view_of(around_poles(traces));
  Panel panel = root_panel(script, box, "Poles enlarged, upper half plane", view);
  panel.curve(arc(view), circle_style);
  draw_roots(panel, traces, view);
  panel.finish();
}

}  // namespace cli::plot
