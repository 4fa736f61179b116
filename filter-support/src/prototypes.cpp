#include "filtermath/prototypes.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "platform.h"
#include "roots.h"

namespace {

using filtermath::power_of_ten;
using filtermath::unit_circle;
using Complex = std::complex<double>;

constexpr double pi = 3.141592653589793;
constexpr double half_pi = 1.5707963267948966;

// The order of these operations fixes the last digits of every design.
double angle(int m, double step) { return (m * pi) * step + half_pi; }

double angle_step(int order) {
  return 1.0 / static_cast<int32_t>(2U * static_cast<uint32_t>(order));
}

Complex product_of_negated(const t_complex64list &roots) {
  Complex product = 1.0;
  for (const Complex &root : roots) product *= -root;
  return product;
}

// Butterworth poles scaled to the ellipse with the semi-axes sinh(mu) and
// cosh(mu) ([OS] B.2). Averaging each point with the mirror image of its
// counterpart makes conjugates exact, and the middle pole of an odd order real.
t_complex64list ellipse(int order, double mu) {
  const double step = angle_step(order);
  const auto n = static_cast<std::size_t>(order);
  t_complex64list points;
  points.reserve(n);
  for (int k = 0; k < order; ++k) points.push_back(unit_circle(angle(2 * k + 1, step)));
  t_complex64list scaled(n);
  for (std::size_t k = 0; k < n; ++k) {
    const Complex &mirror = points[n - 1 - k];
    const double real = (points[k].real() + mirror.real()) * 0.5;
    const double imag = (points[k].imag() - mirror.imag()) * 0.5;
    scaled[k] = {real * std::sinh(mu), imag * std::cosh(mu)};
  }
  return scaled;
}

// The extrema of the Chebyshev polynomial, cos((2j + 1) pi / 2n), without the
// one at 0 that an odd order has: its zero lies at infinity.
t_complex64list abscissae(int order) {
  const bool even = order % 2 == 0;
  const double step = even ? angle_step(order) : 0.5 / order;
  t_complex64list values(static_cast<std::size_t>(even ? order : order - 1));
  const auto at = [step](int m) { return std::cos((m * pi) * step); };
  if (even) {
    for (int j = 0; j < order; ++j) values[static_cast<std::size_t>(j)] = at(2 * j + 1);
  } else {
    for (int j = 0; j < order / 2; ++j) {
      values[static_cast<std::size_t>(j)] = at(2 * j + 1);
      values[static_cast<std::size_t>(order - 2 - j)] = at(2 * order - 1 - 2 * j);
    }
  }
  return values;
}

// i / cos((2k + 1) pi / 2n), in conjugate pairs of growing magnitude.
t_complex64list stopband_zeros(int order) {
  const t_complex64list values = abscissae(order);
  const std::size_t count = values.size();
  t_complex64list zeros(count);
  for (std::size_t j = 0; j < count; ++j)
    zeros[j] = Complex(0.0, 1.0) / ((values[j] - values[count - 1 - j]) * 0.5);
  filtermath::sort_roots(zeros);
  const t_complex64list sorted = zeros;
  const std::size_t half = count / 2;
  for (std::size_t t = 0; t < half; ++t) {
    zeros[2 * t] = sorted[half - 1 - t];
    zeros[2 * t + 1] = sorted[half + t];
  }
  return zeros;
}

}  // namespace

void filtermath_besselap() {}

void filtermath_buttap(int order, t_zpk **out) {
  order = std::max(order, 0);
  const double step = angle_step(order);
  t_complex64list poles;
  poles.reserve(static_cast<std::size_t>(order));
  for (int m = 1; m < order; m += 2) {
    const Complex point = unit_circle(angle(m, step));
    poles.push_back(point);
    poles.push_back(std::conj(point));
  }
  if (order % 2 == 1) poles.emplace_back(-1.0, 0.0);
  const double gain = product_of_negated(poles).real();
  *out = new t_zpk{{}, std::move(poles), gain};
}

void filtermath_cheby1ap(int order, t_zpk **out, double ripple_db) {
  order = std::max(order, 0);
  const double g = power_of_ten(0.1 * ripple_db);
  const double eps = std::sqrt(g + (-1.0));
  const double mu = std::asinh(1.0 / eps) / order;
  t_complex64list poles = ellipse(order, mu);
  double gain = product_of_negated(poles).real();
  if (order % 2 == 0) gain /= std::sqrt(g);
  *out = new t_zpk{{}, std::move(poles), gain};
}

void filtermath_cheby2ap(int order, t_zpk **out, double attenuation_db) {
  order = std::max(order, 0);
  const double mu = std::asinh(std::sqrt(power_of_ten(0.1 * attenuation_db) + (-1.0))) / order;
  t_complex64list zeros = stopband_zeros(order);
  t_complex64list poles = ellipse(order, mu);
  for (Complex &pole : poles) pole = Complex(1.0, 0.0) / pole;
  const double gain = (product_of_negated(poles) / product_of_negated(zeros)).real();
  *out = new t_zpk{std::move(zeros), std::move(poles), gain};
}
