#include "plot/panel.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "plot/gnuplot.h"

namespace cli::plot {
namespace {

struct Style {
  const char *colour, *dash;
  int half_power, pole, zero;  // symbols
};

constexpr std::array styles{Style{"black", "solid", 7, 2, 6},
                            Style{"#0060b0", "(10,5)", 5, 1, 4},
                            Style{"#c04000", "(3,3)", 9, 3, 8},
                            Style{"#007848", "(12,4,3,4)", 13, 13, 12},
                            Style{"#8040a0", "(18,4,3,4,3,4)", 11, 11, 10},
                            Style{"#906000", "(6,10)", 15, 15, 14}};

const Style &style_of(std::size_t i) { return styles.at(i); }

std::string points_style(std::size_t i, int symbol, double size) {
  return fmt::format("pt {} ps {}*S lc rgb '{}'", symbol, size, style_of(i).colour);
}

std::string number(double value) {
  return std::isfinite(value) ? fmt::format("{:.17g}", value) : "NaN";
}

std::string range(const Axis &axis) {
  return fmt::format("[{}:{}]", number(axis.low), number(axis.high));
}

// What a curve leaves in one column of pixels: where it enters, its extremes, where it leaves.
class Column {
 public:
  explicit Column(Curve &out) : out_(out) {}

  void add(double x, double y) {
    if (count_ == 0 || y < low_.y) low_ = {x, y};
    if (count_ == 0 || y > high_.y) high_ = {x, y};
    if (count_ == 0) first_ = {x, y};
    last_ = {x, y};
    ++count_;
  }

  void flush() {
    if (count_ == 0) return;
    put(first_);
    if (low_.x < high_.x) {
      put(low_);
      put(high_);
    } else {
      put(high_);
      put(low_);
    }
    put(last_);
    count_ = 0;
  }

  void interrupt(double x) {
    flush();
    out_.x.push_back(x);
    out_.y.push_back(std::nan(""));
  }

 private:
  struct Point {
    double x, y;
  };

  void put(const Point &point) {
    if (!out_.x.empty() && out_.x.back() == point.x && out_.y.back() == point.y) return;
    out_.x.push_back(point.x);
    out_.y.push_back(point.y);
  }

  Curve &out_;
  int count_ = 0;
  Point first_{}, low_{}, high_{}, last_{};
};

// Levels of minus infinity, and what else is far outside, end beyond the panel.
Curve thinned(const Curve &curve, const Axis &x_axis, const Axis &y_axis, double width) {
  const double beyond = 2 * (y_axis.high - y_axis.low);
  const double lowest = y_axis.logarithmic ? y_axis.low / 10 : y_axis.low - beyond;
  Curve out;
  Column column(out);
  double current = -1.0;
  for (std::size_t i = 0; i < curve.x.size(); ++i) {
    if (std::isnan(curve.y[i])) {
      column.interrupt(curve.x[i]);
      continue;
    }
    const double place = std::floor(along(x_axis, curve.x[i]) * width);
    if (place != current) column.flush();
    current = place;
    column.add(curve.x[i], std::clamp(curve.y[i], lowest, y_axis.high + beyond));
  }
  column.flush();
  return out;
}

}  // namespace

std::string line_style(std::size_t i) {
  return fmt::format("lw 1.6 lc rgb '{}' dt {}", style_of(i).colour, style_of(i).dash);
}
std::string half_power_style(std::size_t i) { return points_style(i, style_of(i).half_power, 0.8); }
std::string pole_style(std::size_t i) { return points_style(i, style_of(i).pole, 0.9); }
std::string zero_style(std::size_t i) { return points_style(i, style_of(i).zero, 0.9); }

void Script::begin(const std::string &terminal, double scale) {
  // The two differ in what they call a point, a unit of a dash, and a symbol of size 1.
  const bool svg = terminal == "svg";
  head_ = fmt::format(
      "set encoding utf8\n"
      "set terminal {0} size {1},{2} noenhanced font 'sans-serif,{3}' fontscale {4} linewidth {4} "
      "dashlength {5} rounded background rgb 'white'\n"
      "S = {6}\n",
      terminal, std::lround(width_ * scale), std::lround(height_ * scale), svg ? 12 : 9, scale,
      svg ? 1 : 2, svg ? 0.7 * scale : 1.0);
  if (!svg) head_ += fmt::format("set termoption pointscale {}\n", scale);
  title_size_ = svg ? 15 : 11;
  line("set multiplot; unset key; set clip two");
  line("set border 3 lw 0.8 lc rgb '#404040'");
  line("set tics nomirror out scale 0.6,0.3");
  line("set style line 1 lw 0.5 lc rgb '#d8d8d8' dt solid");
  line("set style line 2 lw 0.5 lc rgb '#eeeeee' dt solid");
}

void Script::title(const std::string &text, double top) {
  line(fmt::format("set label {} at screen {}, screen {} left font ',{}'", quoted(text), across(20),
                   upwards(top), title_size_));
}

void Script::key_line(double left, double middle, const std::string &style,
                      const std::string &text) {
  line(fmt::format("set arrow from screen {0}, screen {2} to screen {1}, screen {2} nohead {3}",
                   across(left), across(left + 44), upwards(middle), style));
  key_text(left + 52, middle, text);
}

void Script::key_text(double left, double middle, const std::string &text) {
  line(fmt::format("set label {} at screen {}, screen {} left", quoted(text), across(left),
                   upwards(middle)));
}

void Script::key_symbol(double left, double middle, const std::string &style,
                        const std::string &text) {
  line(fmt::format("set label '' at screen {}, screen {} point {}", across(left), upwards(middle),
                   style));
  key_text(left + 10, middle, text);
}

void Script::line(const std::string &command) { commands_ += command + '\n'; }

std::string Script::block(const Curve &curve) {
  const std::string name = fmt::format("$d{}", count_++);
  blocks_ += name + " << EOD\n";
  for (std::size_t i = 0; i < curve.x.size(); ++i)
    blocks_ +=
        std::isnan(curve.y[i]) ? "\n" : fmt::format("{:.12g} {:.9g}\n", curve.x[i], curve.y[i]);
  blocks_ += "EOD\n";
  return name;
}

std::string Script::text() const { return head_ + blocks_ + commands_ + "unset multiplot\n"; }

Panel::Panel(Script &script, const Box &box, const std::string &title, const Axis &x, const Axis &y)
    : script_(script), box_(box), x_(x), y_(y) {
  script_.line(fmt::format("set lmargin at screen {}", script_.across(box.left)));
  script_.line(fmt::format("set rmargin at screen {}", script_.across(box.right)));
  script_.line(fmt::format("set tmargin at screen {}", script_.upwards(box.top)));
  script_.line(fmt::format("set bmargin at screen {}", script_.upwards(box.bottom)));
  script_.line(fmt::format("set label {} at screen {}, screen {} left", quoted(title),
                           script_.across(box.left), script_.upwards(box.top - 12)));
  script_.line("unset logscale");
  if (x.logarithmic) script_.line("set logscale x");
  if (y.logarithmic) script_.line("set logscale y");
  script_.line("set xrange " + range(x));
  script_.line("set yrange " + range(y));
  script_.line("unset y2tics; unset y2label; set border 3");
  script_.line("set grid xtics mxtics ytics ls 1, ls 2");
}

void Panel::ticks(const char *which, const std::vector<Tick> &ticks, bool numbers) {
  std::vector<std::string> list;
  for (const Tick &tick : ticks)
    list.push_back(fmt::format("{} {} {}", quoted(numbers ? tick.label : ""), number(tick.at),
                               tick.label.empty() ? 1 : 0));
  script_.line(fmt::format("set {} nomirror out ({})", which, fmt::join(list, ", ")));
}

void Panel::x_ticks(const std::vector<Tick> &list, const std::string &label) {
  ticks("xtics", list, !label.empty());
  script_.line("set xlabel " + quoted(label) + " offset 0,0.3");
}

void Panel::y_ticks(const std::vector<Tick> &list, const std::string &label, double distance) {
  ticks("ytics", list, true);
  script_.line(fmt::format("set label {} at screen {}, screen {} center rotate by 90",
                           quoted(label), script_.across(box_.left - distance),
                           script_.upwards((box_.top + box_.bottom) / 2)));
}

void Panel::right_ticks(const Axis &axis, const std::vector<Tick> &list, const std::string &label) {
  script_.line("set border 11; set y2range " + range(axis));
  if (axis.logarithmic) script_.line("set logscale y2");
  ticks("y2tics", list, true);
  script_.line(fmt::format("set label {} at screen {}, screen {} center rotate by 90",
                           quoted(label), script_.across(box_.right + 54),
                           script_.upwards((box_.top + box_.bottom) / 2)));
}

void Panel::line(double x0, double y0, double x1, double y1, const std::string &style) {
  drawn_.push_back(fmt::format("{} with lines {}", script_.block({{x0, x1}, {y0, y1}}), style));
}

void Panel::vertical(double x, const std::string &style) {
  if (x > x_.low && x < x_.high) line(x, y_.low, x, y_.high, style);
}

void Panel::horizontal(double y, const std::string &style) {
  if (y > y_.low && y < y_.high) line(x_.low, y, x_.high, y, style);
}

void Panel::curve(const Curve &curve, const std::string &style) {
  drawn_.push_back(fmt::format(
      "{} with lines {}", script_.block(thinned(curve, x_, y_, box_.right - box_.left)), style));
}

void Panel::points(const Curve &curve, const std::string &style) {
  if (!curve.x.empty())
    drawn_.push_back(fmt::format("{} with points {}", script_.block(curve), style));
}

void Panel::label(double x, double y, double right, double up, const std::string &text) {
  const double across = box_.left + along(x_, x) * (box_.right - box_.left) + right;
  const double down = box_.bottom - along(y_, y) * (box_.bottom - box_.top) - up;
  script_.line(fmt::format("set label {} at screen {}, screen {} center", quoted(text),
                           script_.across(across), script_.upwards(down)));
}

void Panel::finish() {
  script_.line(fmt::format("plot {}", fmt::join(drawn_, ", \\\n  ")));
  script_.line("unset label; unset arrow");
}

}  // namespace cli::plot
