#include "unit_circle.h"

#include <array>
#include <cmath>

#include "constants.h"

namespace analysis {
namespace {

Wide twice_sine_squared(Wide angle) {
  const Wide sine = std::sin(angle);
  return 2 * sine * sine;
}

// From the nearest of 1, j and -1, which are met exactly.
template <class Real>
Direction<Real> direction(double w) {
  if (w <= 0.25) return {std::cos(pi<Real> * w), std::sin(pi<Real> * w)};
  if (w < 0.75) {
    const Real from_j = pi<Real> * (static_cast<Real>(w) - 0.5);
    return {-std::sin(from_j), std::cos(from_j)};
  }
  const Real from_minus_one = pi<Real> * (1 - static_cast<Real>(w));
  return {-std::cos(from_minus_one), std::sin(from_minus_one)};
}

Wide sum(const TwoTerms &x, const TwoTerms &y) {
  if constexpr (wide_is_double) return compensated_sum({x.first, x.second, y.first, y.second});
  return x.sum() + y.sum();
}

}  // namespace

CirclePoint circle_point(double w) {
  const Wide rest = 1 - static_cast<Wide>(w);
  const auto [cos, sin] = direction<Wide>(w);
  return {pi<Wide> * w, cos, sin, twice_sine_squared(pi<Wide> * w / 2),
          twice_sine_squared(pi<Wide> * rest / 2)};
}

Direction<Extended> extended_direction(double w) { return direction<Extended>(w); }

Wide plus_cosine(const CirclePoint &z, const TwoTerms &constant, const TwoTerms &factor) {
  if (z.cos > 0.75) return sum(constant, factor) - factor.sum() * z.beyond_one;
  if (z.cos < -0.75) return sum(constant, -factor) + factor.sum() * z.beyond_minus_one;
  return constant.sum() + factor.sum() * z.cos;
}

WideComplex from_root(const CirclePoint &z, const Complex &root) {
  return {plus_cosine(z, {-root.real()}, {1.0}), z.sin - root.imag()};
}

WideComplex quadratic_at(const CirclePoint &z, double c0, double c1, double c2) {
  return {plus_cosine(z, {c1}, {c0, c2}), (static_cast<Wide>(c0) - c2) * z.sin};
}

Wide logarithmic_slope(const WideComplex &value, const WideComplex &derivative) {
  if constexpr (wide_is_double) {  // whose range ends where squares begin
    const auto [x, y] = std::array{value.real(), value.imag()};
    const auto [dx, dy] = std::array{derivative.real(), derivative.imag()};
    if (std::fabs(x) < std::fabs(y)) return (dx * (x / y) + dy) / (x * (x / y) + y);
    return (dx + dy * (y / x)) / (x + y * (y / x));
  }
  return (value.real() * derivative.real() + value.imag() * derivative.imag()) /
         (value.real() * value.real() + value.imag() * value.imag());
}

}  // namespace analysis
