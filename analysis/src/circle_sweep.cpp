#include "circle_sweep.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "analysis/stability.h"

namespace analysis {

CircleSweep::CircleSweep(const std::vector<double> &w)
    : right(static_cast<std::size_t>(std::upper_bound(w.begin(), w.end(), 0.5) - w.begin())) {
  constexpr double quarter_turn = std::numbers::pi / 2;
  for (const double one : w) {
    const bool left = one > 0.5;
    const double from_end = quarter_turn * (left ? 1 - one : one);
    const double near = std::sin(from_end), far = std::cos(from_end);
    const double half_sine = left ? far : near, half_cosine = left ? near : far;
    half_sin.push_back(half_sine);
    half_cos.push_back(half_cosine);
    sin.push_back(2 * half_sine * half_cosine);
    beyond_one.push_back(2 * half_sine * half_sine);
    beyond_minus_one.push_back(2 * half_cosine * half_cosine);
  }
}

RootDistance::RootDistance(const Complex &root) {
  const bool left = root.real() < 0;
  const double from_end = std::atan2(std::fabs(root.imag()), std::fabs(root.real())) / 2;
  half_sin_ = std::copysign(left ? std::cos(from_end) : std::sin(from_end), root.imag());
  half_cos_ = left ? std::sin(from_end) : std::cos(from_end);
  const double radius = std::abs(root), inside = distance_inside(root);
  scale_ = radius > 1 && std::isfinite(radius) ? std::ilogb(radius) : 0;
  const double scaled_inside = std::ldexp(inside, -scale_);
  closest_ = scaled_inside * scaled_inside;
  factor_ = 4 * std::ldexp(std::ldexp(radius, -scale_), -scale_);
  area_ = scaled_inside * std::ldexp(2 - inside, -scale_);
}

}  // namespace analysis
