#include "text/quantities.h"

#include <cmath>

#include <fmt/format.h>

namespace text {

std::string counted(std::size_t count, std::string_view thing) {
  return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

std::string no_less_than(double value) {
  if (!(value > 0.0) || !std::isfinite(value)) return fmt::format("{:.2g}", value);
  const double unit = std::pow(10.0, std::floor(std::log10(value)) - 1.0);
  return fmt::format("{:.2g}", std::ceil(value / unit) * unit);
}

std::string decibels(double level) {
  const double rounded = std::round(level * 1000) / 1000;
  return fmt::format("{:.6g} dB", rounded == 0 ? 0.0 : rounded);
}

std::string duration(double seconds) {
  if (seconds < 1.0) return fmt::format("{:.3g} ms", 1e3 * seconds);
  if (seconds < 120.0) return fmt::format("{:.3g} s", seconds);
  if (seconds < 7200.0) return fmt::format("{:.3g} min", seconds / 60.0);
  return fmt::format("{:.3g} h", seconds / 3600.0);
}

}  // namespace text
