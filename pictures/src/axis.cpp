#include "pictures/axis.h"

#include <array>
#include <cmath>

namespace pictures {
namespace {

constexpr std::array steps{1.0, 2.0, 5.0, 10.0};

}  // namespace

double fraction_along(const Axis &axis, double value) {
  if (axis.is_logarithmic()) return std::log(value / axis.low) / std::log(axis.high / axis.low);
  return (value - axis.low) / (axis.high - axis.low);
}

double value_at(const Axis &axis, double fraction) {
  if (fraction <= 0.0) return axis.low;
  if (fraction >= 1.0) return axis.high;
  if (axis.is_logarithmic()) return axis.low * std::pow(axis.high / axis.low, fraction);
  return axis.low + fraction * (axis.high - axis.low);
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

}  // namespace pictures
