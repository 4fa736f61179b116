#include "plot/axis.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <fmt/format.h>

namespace cli::plot {
namespace {

constexpr const char *minus = "\u2212";
constexpr std::array steps{1.0, 2.0, 5.0, 10.0};

// The sign that typographers use, and no "-0".
std::string with_minus(const std::string &number) {
  const bool negative = number.starts_with('-');
  const bool zero = number.find_first_of("123456789") == std::string::npos;
  return (negative && !zero ? minus : "") + number.substr(negative ? 1 : 0);
}

int decimals_for(double step) {
  return std::clamp(static_cast<int>(std::ceil(-std::log10(step) - 1e-9)), 0, 15);
}

std::string tick_text(double value, double step) {
  return with_minus(fmt::format("{:.{}f}", value, decimals_for(step)));
}

/** A power of a thousand and its letter. */
struct Prefix {
  double factor;
  const char *letter;
};

Prefix prefix_for(double value) {
  if (value >= 1e6) return {1e6, "M"};
  if (value >= 1e3) return {1e3, "k"};
  return {1.0, ""};
}

// With a letter where that needs no more than three decimals.
std::string frequency_tick_text(double hz, double step, const Axis &axis) {
  const bool letters = axis.high >= 2000.0 && step >= 1.0 && hz != 0.0;
  const Prefix prefix = prefix_for(axis.logarithmic ? hz : axis.high);
  if (!letters || prefix.factor > 1000 * step) return tick_text(hz, step);
  return tick_text(hz / prefix.factor, step / prefix.factor) + prefix.letter;
}

// None where an axis has no length, or none that is a number.
std::vector<double> multiples(const Axis &axis, double step, int most) {
  const double slack = 1e-9 * (axis.high - axis.low);
  const double first = std::ceil((axis.low - slack) / step);
  const double count = std::floor((axis.high + slack) / step) - first;
  std::vector<double> list;
  if (!(count <= most)) return list;
  for (int i = 0; i <= count; ++i) list.push_back((first + i) * step);
  return list;
}

double degree_step(double least) {
  for (const double step : {1.0, 5.0, 10.0, 15.0, 30.0, 45.0, 90.0, 180.0})
    if (step >= least) return step;
  return 360.0 * rounded_up(std::max(least / 360.0, 1.0));
}

// Powers of ten and their multiples: labelled are 1, 2 and 5 where there is room.
std::vector<Tick> decade_ticks(const Axis &axis, int most) {
  std::vector<Tick> ticks;
  const double decades = std::log10(axis.high / axis.low);
  const bool roomy = decades * 3 <= most;
  for (int power = static_cast<int>(std::floor(std::log10(axis.low))); power < 20; ++power) {
    const double decade = std::pow(10.0, power);
    for (int digit = 1; digit < 10; ++digit) {
      const double at = digit * decade;
      if (at < axis.low * (1 - 1e-9)) continue;
      if (at > axis.high * (1 + 1e-9)) return ticks;
      const bool labelled = digit == 1 || (roomy && (digit == 2 || digit == 5));
      const Prefix prefix = prefix_for(at * (1 + 1e-9));
      const std::string label = fmt::format("{:.{}f}{}", at / prefix.factor,
                                            decimals_for(decade / prefix.factor), prefix.letter);
      ticks.push_back({at, labelled ? label : ""});
    }
  }
  return ticks;
}

}  // namespace

double along(const Axis &axis, double value) {
  if (axis.logarithmic) return std::log(value / axis.low) / std::log(axis.high / axis.low);
  return (value - axis.low) / (axis.high - axis.low);
}

double value_at(const Axis &axis, double part) {
  if (part <= 0.0) return axis.low;
  if (part >= 1.0) return axis.high;
  if (axis.logarithmic) return axis.low * std::pow(axis.high / axis.low, part);
  return axis.low + part * (axis.high - axis.low);
}

double rounded_up(double value) {
  const double decade = std::pow(10.0, std::floor(std::log10(value)));
  for (const double step : steps)
    if (step * decade >= value * (1 - 1e-9)) return step * decade;
  return 10.0 * decade;
}

double rounded_down(double value) {
  const double decade = std::pow(10.0, std::floor(std::log10(value)));
  double best = decade;
  for (const double step : steps)
    if (step * decade <= value * (1 + 1e-9)) best = step * decade;
  return best;
}

std::vector<Tick> number_ticks(const Axis &axis, int most) {
  const double step = rounded_up((axis.high - axis.low) / most);
  std::vector<Tick> ticks;
  for (const double at : multiples(axis, step, most)) ticks.push_back({at, tick_text(at, step)});
  return ticks;
}

std::vector<Tick> degree_ticks(const Axis &axis, int most) {
  std::vector<Tick> ticks;
  for (const double at : multiples(axis, degree_step((axis.high - axis.low) / most), most))
    ticks.push_back({at, tick_text(at, 1.0)});
  return ticks;
}

std::vector<Tick> frequency_ticks(const Axis &axis, int most) {
  if (axis.logarithmic && axis.high / axis.low > 10.0) return decade_ticks(axis, most);
  const double step = rounded_up((axis.high - axis.low) / most);
  std::vector<Tick> ticks;
  for (const double at : multiples(axis, step, most))
    ticks.push_back({at, frequency_tick_text(at, step, axis)});
  return ticks;
}

std::string frequency_text(double hz) {
  if (hz >= 999.995) return fmt::format("{:.5g} kHz", hz / 1000.0);
  return fmt::format("{:.5g} Hz", hz);
}

}  // namespace cli::plot
