#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace support;

struct Reflection {
  t_complex64list x;
  double beta = 17.0;
  double is_zero = 42.0;  // neither of the values that a caller sets or receives
};

Reflection housh(t_complex64list x, int pivot, double tol = 1e-12) {
  Reflection r;
  r.x = std::move(x);
  filtermath_ss_housh(r.x, pivot, tol, &r.beta, &r.is_zero);
  return r;
}

TEST(Householder, LeavesAVectorWithANaNAsItIs) {
  t_complex64list x{{std::nan(""), 0.0}, {1.0, 0.0}};
  double beta = 0.0;
  double is_zero = 0.0;
  filtermath_ss_housh(x, 2, 1e-12, &beta, &is_zero);
  EXPECT_EQ(is_zero, 1.0);
  EXPECT_EQ(x[1], std::complex<double>(1.0, 0.0));
}

TEST(Householder, AddsTheLengthToAPositivePivot) {
  const Reflection r = housh({3.0, 4.0}, 1);
  EXPECT_EQ(r.x, (t_complex64list{8.0, 4.0}));
  EXPECT_EQ(r.beta, 1.0 / 40.0);
  EXPECT_EQ(r.is_zero, 42.0) << "not written for an x that is not zero";
}

TEST(Householder, MapsTheVectorOntoTheAxisOfItsPivot) {
  for (const int pivot : {1, 2, 3}) {
    const t_complex64list before = {1.0, 2.0, 2.0};  // of length 3
    const Reflection r = housh(before, pivot);
    Complex along = 0.0;
    for (std::size_t i = 0; i < 3; ++i) along += r.x[i] * before[i];
    for (std::size_t i = 0; i < 3; ++i) {
      const Complex mapped = before[i] - r.beta * r.x[i] * along;
      EXPECT_TRUE(close(mapped, i + 1 == static_cast<std::size_t>(pivot) ? -3.0 : 0.0, 1e-15));
    }
  }
}

TEST(Householder, LeavesANegativePivotAsItIs) {
  const Reflection r = housh({-3.0, 4.0}, 1);
  EXPECT_EQ(r.x, (t_complex64list{-3.0, 4.0}));
  EXPECT_EQ(r.beta, 1.0 / 25.0);
  EXPECT_EQ(r.is_zero, 42.0);
}

TEST(Householder, CountsAPivotOfZeroAsPositive) {
  const Reflection r = housh({4.0, 0.0, 3.0}, 2);
  EXPECT_EQ(r.x, (t_complex64list{4.0, 5.0, 3.0}));
  EXPECT_EQ(r.beta, 1.0 / 25.0);
}

TEST(Householder, ReportsAVectorShorterThanTheTolerance) {
  const Reflection r = housh({3.0, 4.0}, 1, 5.001);
  EXPECT_EQ(r.x, (t_complex64list{3.0, 4.0}));
  EXPECT_EQ(r.beta, 25.0);
  EXPECT_EQ(r.is_zero, 1.0);
}

TEST(Householder, ReflectsAVectorAsLongAsTheTolerance) {
  const Reflection r = housh({3.0, 4.0}, 1, 5.0);
  EXPECT_EQ(r.x, (t_complex64list{8.0, 4.0}));
  EXPECT_EQ(r.is_zero, 42.0);
}

TEST(ComplexHouseholder, CountsImaginaryPartsInTheLength) {
  const Reflection r = housh({{3.0, 4.0}, {0.0, 12.0}}, 1);  // of length 13
  EXPECT_EQ(r.x, (t_complex64list{{16.0, 4.0}, {0.0, 12.0}}));
  EXPECT_EQ(r.beta, 1.0 / (3.0 * 13.0 + 169.0));
  EXPECT_EQ(r.is_zero, 42.0);
}

TEST(ComplexHouseholder, AddsTheLengthToTheRealPartOfThePivotAlone) {
  const Reflection r = housh({{1.0, -2.0}, {2.0, 4.0}}, 2);  // of length 5
  EXPECT_EQ(r.x, (t_complex64list{{1.0, -2.0}, {7.0, 4.0}}));
  EXPECT_EQ(r.beta, 1.0 / (2.0 * 5.0 + 25.0));
}

TEST(ComplexHouseholder, JudgesThePivotByItsRealPart) {
  const Reflection positive = housh({{3.0, -4.0}, {0.0, 12.0}}, 1);
  EXPECT_EQ(positive.x[0], Complex(16.0, -4.0));
  const Reflection negative = housh({{-3.0, 4.0}, {0.0, 12.0}}, 1);
  EXPECT_EQ(negative.x, (t_complex64list{{-3.0, 4.0}, {0.0, 12.0}}));
  EXPECT_EQ(negative.beta, 1.0 / 169.0);
  EXPECT_EQ(negative.is_zero, 42.0);
}

TEST(ComplexHouseholder, CountsAnImaginaryPivotAsPositive) {
  for (const double zero : {0.0, -0.0}) {
    for (const double imaginary : {3.0, -3.0}) {
      const Reflection r = housh({{zero, imaginary}, 4.0}, 1);
      EXPECT_EQ(r.x, (t_complex64list{{5.0, imaginary}, 4.0}));
      EXPECT_EQ(r.beta, 1.0 / 25.0);
    }
  }
}

TEST(ComplexHouseholder, ReportsAnImaginaryVectorShorterThanTheTolerance) {
  const Reflection shorter = housh({{0.0, 3.0}, {0.0, 4.0}}, 1, 5.001);
  EXPECT_EQ(shorter.x, (t_complex64list{{0.0, 3.0}, {0.0, 4.0}}));
  EXPECT_EQ(shorter.beta, 25.0);
  EXPECT_EQ(shorter.is_zero, 1.0);
  EXPECT_EQ(housh({{0.0, 3.0}, {0.0, 4.0}}, 1, 5.0).is_zero, 42.0);
}

void expect_same(const Complex &x, const Complex &y) {
  const auto same = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
  EXPECT_TRUE(same(x.real(), y.real()) && same(x.imag(), y.imag())) << x << " and " << y;
}

// A length that is NaN does not compare as reaching the tolerance.
TEST(Householder, LeavesAPivotWithANaNAsItIs) {
  for (const Complex pivot : {Complex(not_a_number, 0.0), Complex(1.0, not_a_number),
                              Complex(-1.0, not_a_number), Complex(not_a_number, not_a_number)}) {
    for (const double tol : {0.0, 1e-12}) {
      const Reflection r = housh({pivot, {2.0, 1.0}}, 1, tol);
      expect_same(r.x[0], pivot);
      EXPECT_EQ(r.x[1], Complex(2.0, 1.0));
      EXPECT_TRUE(std::isnan(r.beta));
      EXPECT_EQ(r.is_zero, 1.0);
    }
  }
}

TEST(Householder, LeavesAVectorAsItIsUnderAToleranceOfNaN) {
  const Reflection r = housh({3.0, 4.0}, 1, not_a_number);
  EXPECT_EQ(r.x, (t_complex64list{3.0, 4.0}));
  EXPECT_EQ(r.beta, 25.0);
  EXPECT_EQ(r.is_zero, 1.0);
}

TEST(Householder, ReflectsAVectorOfNothingOnlyWithoutATolerance) {
  const Reflection without = housh({0.0, 0.0}, 1, 0.0);
  EXPECT_EQ(without.is_zero, 42.0);
  EXPECT_EQ(without.beta, infinity);
  const Reflection with = housh({0.0, 0.0}, 1, 1e-300);
  EXPECT_EQ(with.is_zero, 1.0);
  EXPECT_EQ(with.beta, 0.0);
}

}  // namespace
