#include "pictures/ticks.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace pictures {
namespace {

constexpr const char *minus = "\u2212";

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
std::string magnitude_text(double value, double step, const Axis &axis) {
  const bool letters = axis.high >= 2000.0 && step >= 1.0 && value != 0.0;
  const Prefix prefix = prefix_for(axis.is_logarithmic() ? value : axis.high);
  if (!letters || prefix.factor > 1000 * step) return tick_text(value, step);
  return tick_text(value / prefix.factor, step / prefix.factor) + prefix.letter;
}

// Empty where an axis has no length, or no finite one.
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
  std::vector<Tick> list;
  const double decades = std::log10(axis.high / axis.low);
  const bool roomy = decades * 3 <= most;
  for (int power = static_cast<int>(std::floor(std::log10(axis.low))); power < 20; ++power) {
    const double decade = std::pow(10.0, power);
    for (int digit = 1; digit < 10; ++digit) {
      const double at = digit * decade;
      if (at < axis.low * (1 - 1e-9)) continue;
      if (at > axis.high * (1 + 1e-9)) return list;
      const bool labelled = digit == 1 || (roomy && (digit == 2 || digit == 5));
      const Prefix prefix = prefix_for(at * (1 + 1e-9));
      const std::string label = fmt::format("{:.{}f}{}", at / prefix.factor,
                                            decimals_for(decade / prefix.factor), prefix.letter);
      list.push_back({at, labelled ? label : ""});
    }
  }
  return list;
}

std::vector<Tick> degree_ticks(const Axis &axis, int most) {
  std::vector<Tick> list;
  for (const double at : multiples(axis, degree_step((axis.high - axis.low) / most), most))
    list.push_back({at, tick_text(at, 1.0)});
  return list;
}

}  // namespace

std::vector<Tick> ticks(const Axis &axis, TickStyle style, int most) {
  const bool magnitudes = style == TickStyle::magnitudes;
  if (magnitudes && axis.is_logarithmic() && axis.high / axis.low > 10.0)
    return decade_ticks(axis, most);
  if (style == TickStyle::degrees) return degree_ticks(axis, most);
  const double step = rounded_up((axis.high - axis.low) / most);
  std::vector<Tick> list;
  for (const double at : multiples(axis, step, most))
    list.push_back({at, magnitudes ? magnitude_text(at, step, axis) : tick_text(at, step)});
  return list;
}

}  // namespace pictures
