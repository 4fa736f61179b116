#include "unit_circle.h"

#include <cmath>
#include <numbers>

namespace analysis {
namespace {

constexpr Wide pi = std::numbers::pi_v<Wide>;

Wide twice_sine_squared(Wide angle) {
  const Wide sine = std::sin(angle);
  return 2 * sine * sine;
}

}  // namespace

CirclePoint circle_point(double w) {
  CirclePoint z{};
  const Wide rest = 1 - static_cast<Wide>(w);
  z.angle = pi * w;
  z.beyond_one = twice_sine_squared(pi * w / 2);
  z.beyond_minus_one = twice_sine_squared(pi * rest / 2);
  if (w <= 0.25) {
    z.cos = std::cos(z.angle);
    z.sin = std::sin(z.angle);
  } else if (w < 0.75) {
    const Wide from_j = pi * (static_cast<Wide>(w) - 0.5L);
    z.cos = -std::sin(from_j);
    z.sin = std::cos(from_j);
  } else {
    z.cos = -std::cos(pi * rest);
    z.sin = std::sin(pi * rest);
  }
  return z;
}

Wide plus_cosine(const CirclePoint &z, Wide constant, Wide factor) {
  if (z.cos > 0.75L) return (constant + factor) - factor * z.beyond_one;
  if (z.cos < -0.75L) return (constant - factor) + factor * z.beyond_minus_one;
  return constant + factor * z.cos;
}

WideComplex from_root(const CirclePoint &z, const Complex &root) {
  return {plus_cosine(z, -static_cast<Wide>(root.real()), 1), z.sin - root.imag()};
}

WideComplex quadratic_at(const CirclePoint &z, double c0, double c1, double c2) {
  const Wide first = c0;
  return {plus_cosine(z, c1, first + c2), (first - c2) * z.sin};
}

Wide logarithmic_slope(const WideComplex &value, const WideComplex &derivative) {
  return (value.real() * derivative.real() + value.imag() * derivative.imag()) /
         (value.real() * value.real() + value.imag() * value.imag());
}

}  // namespace analysis
