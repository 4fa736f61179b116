#include "pictures/z_plane.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <fmt/format.h>

#include "power_label.h"

namespace pictures {
namespace {

using analysis::Complex;

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
  return counted_in_powers(inner, power_);
}

}  // namespace pictures
