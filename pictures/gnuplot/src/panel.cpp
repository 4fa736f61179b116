#include "panel.h"

#include <cmath>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "gnuplot/quoting.h"
#include "pictures/thinning.h"

namespace gnuplot {
namespace {

using pictures::Axis;
using pictures::Curve;
using pictures::LabelledAxis;

std::string number(double value) {
  return std::isfinite(value) ? fmt::format("{:.17g}", value) : "NaN";
}

std::string range(const Axis &axis) {
  return fmt::format("[{}:{}]", number(axis.low), number(axis.high));
}

}  // namespace

Panel::Panel(Script &script, const Box &box, const std::string &title, const Axis &x, const Axis &y)
    : script_(script), box_(box), x_(x), y_(y) {
  script_.line(fmt::format("set lmargin at screen {}", script_.across(box.left)));
  script_.line(fmt::format("set rmargin at screen {}", script_.across(box.right)));
  script_.line(fmt::format("set tmargin at screen {}", script_.upwards(box.top)));
  script_.line(fmt::format("set bmargin at screen {}", script_.upwards(box.bottom)));
  script_.key_text({box.left, box.top - 12}, title);
  script_.line("unset logscale");
  if (x.is_logarithmic()) script_.line("set logscale x");
  if (y.is_logarithmic()) script_.line("set logscale y");
  script_.line("set xrange " + range(x));
  script_.line("set yrange " + range(y));
  script_.line("unset y2tics; unset y2label; set border 3");
  script_.line("set grid xtics mxtics ytics ls 1, ls 2");
}

void Panel::ticks(const char *which, const LabelledAxis &axis, int most, Numbering numbering) {
  std::vector<std::string> list;
  for (const pictures::Tick &tick : pictures::ticks(axis.axis, axis.ticks, most)) {
    const std::string label = numbering == Numbering::shown ? tick.label : "";
    const int level = tick.label.empty() ? 1 : 0;
    list.push_back(fmt::format("{} {} {}", quoted(label), number(tick.at), level));
  }
  script_.line(fmt::format("set {} nomirror out ({})", which, fmt::join(list, ", ")));
}

void Panel::label_x(const LabelledAxis &axis, int most, Numbering numbering) {
  ticks("xtics", axis, most, numbering);
  const std::string label = numbering == Numbering::shown ? axis.label : "";
  script_.line("set xlabel " + quoted(label) + " offset 0,0.3");
}

void Panel::label_y(const LabelledAxis &axis, int most, double distance) {
  ticks("ytics", axis, most, Numbering::shown);
  script_.upright({box_.left - distance, (box_.top + box_.bottom) / 2}, axis.label);
}

void Panel::leave_axes_blank() { script_.line("set xtics (); set ytics (); set xlabel ''"); }

void Panel::label_right(const LabelledAxis &axis, int most) {
  script_.line("set border 11; set y2range " + range(axis.axis));
  if (axis.axis.is_logarithmic()) script_.line("set logscale y2");
  ticks("y2tics", axis, most, Numbering::shown);
  script_.upright({box_.right + 60, (box_.top + box_.bottom) / 2}, axis.label);
}

void Panel::line(const Curve &ends, const std::string &style) {
  if (ends.x.empty()) return;
  drawn_.push_back(fmt::format("{} with lines {}", script_.block(ends), style));
}

void Panel::vertical(double x, const std::string &style) {
  line({{x, x}, {y_.low, y_.high}}, style);
}

void Panel::horizontal(double y, const std::string &style) {
  line({{x_.low, x_.high}, {y, y}}, style);
}

void Panel::curve(const Curve &curve, const std::string &style) {
  const pictures::Canvas canvas{x_, y_, box_.right - box_.left, box_.bottom - box_.top};
  line(pictures::thinned(curve, canvas), style);
}

void Panel::symbols(const Curve &places, const std::string &style) {
  if (places.x.empty()) return;
  drawn_.push_back(fmt::format("{} with points {}", script_.block(places), style));
}

void Panel::text_beside(const Place &values, const Place &offset, const std::string &text) {
  const double across =
      box_.left + fraction_along(x_, values.left) * (box_.right - box_.left) + offset.left;
  const double down =
      box_.bottom - fraction_along(y_, values.top) * (box_.bottom - box_.top) - offset.top;
  script_.centred({across, down}, text);
}

void Panel::finish() {
  if (drawn_.empty()) drawn_.emplace_back("NaN notitle");  // axes alone
  script_.line(fmt::format("plot {}", fmt::join(drawn_, ", \\\n  ")));
  script_.line("unset label; unset arrow");
}

}  // namespace gnuplot
