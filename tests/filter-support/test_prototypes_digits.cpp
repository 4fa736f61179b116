// The last digits of the prototypes. Every design begins with them, so they follow one
// order of operations, which other and equally good ones would not reproduce.

#include <gtest/gtest.h>

#include "platform.h"
#include "support.h"

namespace {

using namespace support;
using filtermath::power_of_ten;
using filtermath::unit_circle;

constexpr int highest_order = 200;
constexpr double half_pi = 1.5707963267948966;
static_assert(pi == 3.141592653589793);

double step(int order) { return 1.0 / static_cast<double>(2 * order); }
double angle(int m, int order) { return (m * pi) * step(order) + half_pi; }

Complex product_of_negated(const t_complex64list &roots) {
  Complex product = 1.0;
  for (const Complex &root : roots) product *= -root;
  return product;
}

t_complex64list butterworth_poles(int order) {
  t_complex64list poles;
  for (int m = 1; m < order; m += 2) {
    const Complex point = unit_circle(angle(m, order));
    poles.push_back(point);
    poles.push_back(std::conj(point));
  }
  if (order % 2 == 1) poles.emplace_back(-1.0);
  return poles;
}

/** The Butterworth poles by angle, made symmetric and stretched to an ellipse. */
t_complex64list ellipse(int order, double mu) {
  t_complex64list points;
  for (int k = 0; k < order; ++k) points.push_back(unit_circle(angle(2 * k + 1, order)));
  t_complex64list poles;
  for (std::size_t k = 0; k < points.size(); ++k) {
    const Complex mirror = points[points.size() - 1 - k];
    poles.emplace_back((points[k].real() + mirror.real()) * 0.5 * std::sinh(mu),
                       (points[k].imag() - mirror.imag()) * 0.5 * std::cosh(mu));
  }
  return poles;
}

// Pairs of growing magnitude: that of 1 / cos(m pi / 2n) for m = 1, 3, 5, ...
t_complex64list chebyshev2_zeros(int order) {
  const auto abscissa = [order](int m) { return std::cos((m * pi) * step(order)); };
  t_complex64list zeros;
  for (int m = 1; m < order; m += 2) {
    const Complex upper = j / Complex((abscissa(m) - abscissa(2 * order - m)) * 0.5);
    zeros.push_back(upper);
    zeros.push_back(j / Complex((abscissa(2 * order - m) - abscissa(m)) * 0.5));
  }
  return zeros;
}

TEST(PrototypeDigits, OfButterworthPolesFollowTheAngle) {
  for (int n = 1; n <= highest_order; ++n) {
    const Zpk filter = butterworth(n);
    EXPECT_EQ(filter->poles, butterworth_poles(n)) << "order " << n;
    EXPECT_EQ(filter->gain, product_of_negated(filter->poles).real()) << "order " << n;
  }
}

TEST(PrototypeDigits, OfChebyshev1PolesFollowTheAngleAndTheEllipse) {
  for (const double ripple_db : {0.01, 0.5, 3.0}) {
    for (int n = 1; n <= highest_order; ++n) {
      const double g = power_of_ten(0.1 * ripple_db);
      const double mu = std::asinh(1.0 / std::sqrt(g + -1.0)) / n;
      const Zpk filter = chebyshev1(n, ripple_db);
      EXPECT_EQ(filter->poles, ellipse(n, mu)) << "order " << n << ", " << ripple_db << " dB";
      const double product = product_of_negated(filter->poles).real();
      EXPECT_EQ(filter->gain, n % 2 == 0 ? product / std::sqrt(g) : product) << "order " << n;
    }
  }
}

TEST(PrototypeDigits, OfChebyshev2RootsFollowTheAngleAndTheEllipse) {
  for (const double attenuation_db : {3.0, 40.0, 77.7}) {
    for (int n = 1; n <= highest_order; ++n) {
      const double mu = std::asinh(std::sqrt(power_of_ten(0.1 * attenuation_db) + -1.0)) / n;
      t_complex64list poles = ellipse(n, mu);
      for (Complex &pole : poles) pole = Complex(1.0, 0.0) / pole;
      const Zpk filter = chebyshev2(n, attenuation_db);
      EXPECT_EQ(filter->zeros, chebyshev2_zeros(n)) << "order " << n;
      EXPECT_EQ(filter->poles, poles) << "order " << n << ", " << attenuation_db << " dB";
      EXPECT_EQ(filter->gain,
                (product_of_negated(poles) / product_of_negated(filter->zeros)).real())
          << "order " << n;
    }
  }
}

// Otherwise the tests above could not distinguish one order of operations from another.
TEST(PrototypeDigits, WouldBeOthersInAnyOtherOrderOfOperations) {
  int factors = 0;
  int quotients = 0;
  int sums = 0;
  int reversed = 0;
  for (int n = 2; n <= highest_order; ++n) {
    for (int m = 1; m < n; m += 2) {
      const Complex point = unit_circle(angle(m, n));
      factors += unit_circle(m * (pi * step(n)) + half_pi) != point ? 1 : 0;
      quotients += unit_circle((m * pi) / (2 * n) + half_pi) != point ? 1 : 0;
      sums += unit_circle(((m + n) * pi) * step(n)) != point ? 1 : 0;
    }
    t_complex64list poles = butterworth_poles(n);
    const double gain = product_of_negated(poles).real();
    std::reverse(poles.begin(), poles.end());
    reversed += product_of_negated(poles).real() != gain ? 1 : 0;
  }
  EXPECT_GT(factors, 100);
  EXPECT_GT(quotients, 100);
  EXPECT_GT(sums, 100);
  EXPECT_GT(reversed, 10);
}

}  // namespace
