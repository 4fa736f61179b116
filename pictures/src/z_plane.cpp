#include "pictures/z_plane.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include <fmt/format.h>

#include "analysis/stability.h"

namespace pictures {
namespace {

using analysis::Complex;

std::string superscript(int number) {
  static const char *const digits[] = {"\u2070", "\u00b9", "\u00b2", "\u00b3", "\u2074",
                                       "\u2075", "\u2076", "\u2077", "\u2078", "\u2079"};
  std::string text;
  for (const char c : std::to_string(number)) text += digits[c - '0'];
  return text;
}

}  // namespace

bool Square::contains(const Complex &z) const {
  const Complex from = z - centre;
  return std::fabs(from.real()) <= half && std::fabs(from.imag()) <= half;
}

Square around_circle(const std::vector<DrawnFilter> &filters) {
  double reach = 1.0;
  for (const DrawnFilter &filter : filters)
    for (const auto *roots : {&filter.roots.zeros, &filter.roots.poles})
      for (const Complex &root : *roots)
        reach = std::max({reach, std::fabs(root.real()), std::fabs(root.imag())});
  return {{0.0, 0.0}, 1.35 * reach};
}

Square around_poles(const std::vector<DrawnFilter> &filters) {
  double left = 2.0, right = -2.0, low = 2.0, high = -2.0;
  const auto include = [&](const Complex &z) {
    left = std::min(left, z.real());
    right = std::max(right, z.real());
    low = std::min(low, z.imag());
    high = std::max(high, z.imag());
  };
  Complex nearest = 0.0;  // to the circle
  double least = std::numeric_limits<double>::infinity();
  for (const DrawnFilter &filter : filters)
    for (const Complex &below_or_above : filter.roots.poles) {
      const Complex pole(below_or_above.real(), std::fabs(below_or_above.imag()));
      include(pole);
      const double distance = std::fabs(analysis::distance_inside(pole));
      if (distance >= least) continue;
      least = distance;
      nearest = pole;
    }
  include(std::polar(1.0, std::arg(nearest)));
  const double half = std::max((right - left) / 2, (high - low) / 2);
  return {{(left + right) / 2, (low + high) / 2}, 1.25 * half};
}

ZPlaneView::ZPlaneView(const Square &square) : square_(square) {
  if (square.half >= 0.02) return;
  power_ = static_cast<int>(std::ceil(-std::log10(square.half)));
  origin_ = {std::round(square.centre.real() * unit()) / unit(),
             std::round(square.centre.imag() * unit()) / unit()};
}

Curve ZPlaneView::unit_circle() const {
  constexpr int half_turn = 180;  // steps
  const double middle = std::arg(square_.centre);
  const double reach = std::min(std::numbers::pi, 4 * square_.half);
  Curve arc;
  for (int i = -half_turn; i <= half_turn; ++i) {
    const double angle = middle + reach * i / half_turn;
    const Complex at = seen(std::polar(1.0, angle));
    arc.add(at.real(), at.imag());
  }
  return arc;
}

double ZPlaneView::unit() const { return std::pow(10.0, power_); }

Axis ZPlaneView::axis(double middle) const {
  const double reach = square_.half * unit();
  return {middle - reach, middle + reach, Scale::linear};
}

std::string ZPlaneView::label(const std::string &part, double origin) const {
  if (power_ == 0) return part;
  const std::string inner =
      origin == 0.0 ? part
                    : fmt::format("({} {} {:.{}f})", part, origin < 0.0 ? "+" : "\u2212",
                                  std::fabs(origin), power_);
  return fmt::format("{} \u00b7 10{}", inner, superscript(power_));
}

}  // namespace pictures
