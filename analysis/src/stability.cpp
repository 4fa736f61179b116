#include "analysis/stability.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "wide.h"

namespace analysis {
namespace {

// With s = |a1|: the poles' moduli are not changed by the sign of a1.
double section_margin(double s, double a2) {
  const double square = s * s;
  const double discriminant = (square - 4 * a2) + std::fma(s, s, -square);
  if (discriminant < 0) return (1 - a2) / (1 + std::sqrt(a2));
  const double root = std::sqrt(discriminant);
  // 1 - p for the two real poles; the one further out carries the cancellation, which the
  // product (1 - p) (1 - q) = 1 - s + a2 takes out of it
  const double other = ((2 - s) + root) / 2;
  const auto product = static_cast<double>((1 - static_cast<Extended>(s)) + a2);
  return other > 0 ? product / other : ((2 - s) - root) / 2;
}

Stability with_margin(double margin) { return {1 - margin, margin, margin > 0}; }

}  // namespace

double distance_inside(const Complex &root) {
  const double x = std::max(std::fabs(root.real()), std::fabs(root.imag()));
  const double y = std::min(std::fabs(root.real()), std::fabs(root.imag()));
  const double x2 = x * x, y2 = y * y;
  const double rounded_off = std::fma(x, x, -x2) + std::fma(y, y, -y2);
  return (((1 - x2) - y2) - rounded_off) / (1 + std::hypot(x, y));
}

Stability stability(const Roots &filter) {
  double margin = 1.0;
  for (const Complex &pole : filter.poles) {
    const double inside = distance_inside(pole);
    if (!(inside >= margin)) margin = inside;
    if (std::isnan(inside)) break;
  }
  return with_margin(margin);
}

Stability stability(const Sections &filter) {
  double margin = 1.0;
  for (const Section &section : filter) {
    const double inside = section_margin(std::fabs(section.a1), section.a2);
    if (!(inside >= margin)) margin = inside;
    if (std::isnan(inside)) break;
  }
  return with_margin(margin);
}

double ringing_samples(const Stability &stability) {
  if (stability.radius == 0.0) return 0.0;
  if (stability.margin <= 0.0) return std::numeric_limits<double>::infinity();
  return std::log(1000.0) / -std::log1p(-stability.margin);
}

double ringing_milliseconds(const Stability &stability, double samplerate) {
  return ringing_samples(stability) / samplerate * 1000;
}

}  // namespace analysis
