// Poles outside the unit circle, counted without computing any.

#include <gtest/gtest.h>

#include <cmath>

#include "analysis/poles_outside.h"

using analysis::Complex;
using analysis::poles_outside;

namespace {

std::vector<double> even_steps(int count) {
  std::vector<double> at;
  for (int i = 0; i <= count; ++i) at.push_back(static_cast<double>(i) / count);
  return at;
}

// The polynomial with one root on the real axis, or with a conjugate pair.
std::vector<double> factor(const Complex &root) {
  if (root.imag() == 0.0) return {1.0, -root.real()};
  return {1.0, -2.0 * root.real(), std::norm(root)};
}

std::vector<double> product(const std::vector<Complex> &roots) {
  std::vector<double> polynomial{1.0};
  for (const Complex &root : roots) {
    const std::vector<double> next = factor(root);
    std::vector<double> sum(polynomial.size() + next.size() - 1);
    for (std::size_t i = 0; i < polynomial.size(); ++i)
      for (std::size_t k = 0; k < next.size(); ++k) sum[i + k] += polynomial[i] * next[k];
    polynomial = sum;
  }
  return polynomial;
}

}  // namespace

TEST(PolesOutside, CountsEachPoleOutside) {
  const Complex inside = std::polar(0.9, 1.0), outside = std::polar(1.1, 2.0);
  EXPECT_EQ(poles_outside(product({inside, 0.5, -0.99}), even_steps(16)), 0U);
  EXPECT_EQ(poles_outside(product({inside, 1.5}), even_steps(16)), 1U);
  EXPECT_EQ(poles_outside(product({inside, -1.01}), even_steps(16)), 1U);
  EXPECT_EQ(poles_outside(product({inside, outside}), even_steps(16)), 2U);
  EXPECT_EQ(poles_outside(product({outside, 3.0, -2.0}), even_steps(16)), 4U);
}

TEST(PolesOutside, TellsPolesThatAlmostTouchTheCircle) {
  const double near = 1e-9;
  EXPECT_EQ(poles_outside(product({std::polar(1 - near, 0.7), -0.3}), even_steps(8)), 0U);
  EXPECT_EQ(poles_outside(product({std::polar(1 + near, 0.7), -0.3}), even_steps(8)), 2U);
  EXPECT_EQ(poles_outside(product({Complex(1 + near), -0.3}), even_steps(8)), 1U);
}

TEST(PolesOutside, IsUnknownWhereThePolynomialVanishes) {
  EXPECT_EQ(poles_outside({1.0, -1.0}, even_steps(8)), std::nullopt) << "a pole at 1";
  EXPECT_EQ(poles_outside({1.0, 0.0, 1.0}, even_steps(8)), std::nullopt) << "a pair at +-i";
}

TEST(PolesOutside, DoesNotMindALeadingFactor) {
  std::vector<double> polynomial = product({std::polar(1.1, 2.0), 0.5});
  for (double &coefficient : polynomial) coefficient *= -1e-100;
  EXPECT_EQ(poles_outside(polynomial, even_steps(16)), 2U);
}
