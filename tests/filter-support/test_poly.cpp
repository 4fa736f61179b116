#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support.h"

namespace {

using namespace support;

t_complex64list expanded(const t_complex64list &roots) {
  t_complex64list coefficients = {{99.0, 99.0}, {99.0, 99.0}};  // to be discarded
  filtermath_poly(roots, coefficients);
  return coefficients;
}

TEST(Poly, RealRootsGiveRealCoefficients) {
  EXPECT_EQ(expanded({1.0, 2.0}), (t_complex64list{1.0, -3.0, 2.0}));
}

TEST(Poly, AConjugatePairGivesRealCoefficients) {
  EXPECT_EQ(expanded({j, -j}), (t_complex64list{1.0, 0.0, 1.0}));
}

TEST(Poly, ALoneComplexRootKeepsItsImaginaryPart) {
  EXPECT_EQ(expanded({j}), (t_complex64list{1.0, -j}));
}

TEST(Poly, NoRootsGiveOne) { EXPECT_EQ(expanded({}), t_complex64list{1.0}); }

// The product before last rounds in another way when the roots change places.
TEST(Poly, RoundingFollowsTheOrderOfTheRoots) {
  const double tiny = std::ldexp(1.0, -53);
  EXPECT_EQ(expanded({-1.0, -tiny, -tiny})[1], 1.0);
  EXPECT_EQ(expanded({-tiny, -tiny, -1.0})[1], 1.0 + 2.0 * tiny);
}

RC_GTEST_PROP(Poly, VanishesAtItsRoots, ()) {
  const auto parts = *rc::gen::container<std::vector<std::pair<int, int>>>(
      *rc::gen::inRange<std::size_t>(1, 9),
      rc::gen::pair(rc::gen::inRange(-20, 21), rc::gen::inRange(-20, 21)));
  t_complex64list roots;
  for (const auto &[re, im] : parts) roots.emplace_back(re / 10.0, im / 10.0);
  const t_complex64list coefficients = expanded(roots);
  RC_ASSERT(coefficients.size() == roots.size() + 1);
  RC_ASSERT(coefficients[0] == 1.0);
  for (const Complex root : roots) {
    double size = 0.0;  // of the terms, which cancel at a root
    for (const Complex c : coefficients) size = size * std::abs(root) + std::abs(c);
    RC_ASSERT(std::abs(polynomial(coefficients, root)) <= 1e-13 * std::max(size, 1.0));
  }
}

TEST(CharacteristicPolynomial, OfACompanionMatrixIsReadOffItsRow) {
  const Matrix coefficients(matrix64_new());
  EXPECT_EQ(filtermath_poly(matrix({{0.0, 1.0}, {-2.0, -3.0}}).get(), coefficients.get()), 0);
  EXPECT_EQ(coefficients->cols, 1);
  EXPECT_EQ(coefficients->rows, 3);
  EXPECT_TRUE(close(stored(coefficients.get()), {1.0, 3.0, 2.0}, 1e-14));
}

TEST(CharacteristicPolynomial, OfARotationHasNoRealRoots) {
  const Matrix coefficients(matrix64_new());
  EXPECT_EQ(filtermath_poly(matrix({{0.0, -2.0}, {2.0, 0.0}}).get(), coefficients.get()), 0);
  EXPECT_TRUE(close(stored(coefficients.get()), {1.0, 0.0, 4.0}, 1e-14));
}

TEST(CharacteristicPolynomial, WhatIsNotSquareHasNone) {
  const Matrix coefficients = matrix({{7.0, 8.0}});
  EXPECT_EQ(filtermath_poly(shaped(3, 2).get(), coefficients.get()), -1);
  EXPECT_EQ(filtermath_poly(shaped(2, 3).get(), coefficients.get()), -1);
  EXPECT_EQ(coefficients->cols, 2);
  EXPECT_EQ(coefficients->rows, 1);
  EXPECT_EQ(stored(coefficients.get()), (std::vector<double>{7.0, 8.0}));
}

TEST(CharacteristicPolynomial, OfNothingIsOne) {
  const Matrix coefficients(matrix64_new());
  EXPECT_EQ(filtermath_poly(shaped(0, 0).get(), coefficients.get()), 0);
  EXPECT_EQ(coefficients->rows, 1);
  EXPECT_EQ(stored(coefficients.get()), std::vector<double>{1.0});
}

TEST(CharacteristicPolynomial, OfAMatrixThatIsNotFiniteIsNotFiniteEither) {
  const Watchdog watchdog("the characteristic polynomial of a NaN");
  for (const double bad : {not_a_number, infinity, -infinity}) {
    const Matrix coefficients(matrix64_new());
    EXPECT_EQ(filtermath_poly(matrix({{bad, 1.0}, {2.0, 3.0}}).get(), coefficients.get()), 0);
    EXPECT_EQ(coefficients->rows, 3);
    EXPECT_FALSE(std::isfinite(coefficients->data[1]));
    EXPECT_FALSE(std::isfinite(coefficients->data[2]));
  }
}

RC_GTEST_PROP(CharacteristicPolynomial, IsTheDeterminantAtAnyPoint, ()) {
  const int n = *rc::gen::inRange(1, 7);
  const auto entries = *rc::gen::container<std::vector<int>>(static_cast<std::size_t>(n * n),
                                                             rc::gen::inRange(-10, 11));
  const Matrix m = shaped(n, n);
  for (std::size_t i = 0; i < entries.size(); ++i) m->data[i] = entries[i] / 10.0;
  const Matrix coefficients(matrix64_new());
  RC_ASSERT(filtermath_poly(m.get(), coefficients.get()) == 0);
  const std::vector<double> p = stored(coefficients.get());
  RC_ASSERT(p.size() == static_cast<std::size_t>(n + 1));
  RC_ASSERT(p[0] == 1.0);
  for (const Complex s : {Complex(7.0, 0.0), Complex(0.0, 8.0), Complex(-6.0, 5.0)})
    RC_ASSERT(bool(close(polynomial(p, s), characteristic(m.get(), s), 1e-11)));
}

}  // namespace
