#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

struct Fraction {
  Values b;
  Values a;
};

Fraction fraction(const Zpk &filter, void *unused = nullptr) {
  Flat b;
  Flat a;
  filtermath_zpk2tf(filter.get(), unused, &b.data, &b.count, &a.data, &a.count);
  return {b.values(), a.values()};
}

TEST(Zpk2tf, WithoutZerosTheNumeratorIsTheGain) {
  const Fraction tf = fraction(zpk({}, {0.5}, 3.0));
  EXPECT_EQ(tf.b, Values{3.0});
  EXPECT_EQ(tf.a, (Values{1.0, -0.5}));
}

TEST(Zpk2tf, WithoutPolesTheDenominatorIsOne) {
  const Fraction tf = fraction(zpk({2.0}, {}, 3.0));
  EXPECT_EQ(tf.b, (Values{3.0, -6.0}));
  EXPECT_EQ(tf.a, Values{1.0});
}

TEST(Zpk2tf, ConjugatePairsExpandToRealPolynomials) {
  const Fraction tf = fraction(zpk({j, -j}, {{0.5, 0.5}, {0.5, -0.5}, 0.25}, 4.0));
  EXPECT_EQ(tf.b, (Values{4.0, 0.0, 4.0}));
  EXPECT_EQ(tf.a, (Values{1.0, -1.25, 0.75, -0.125}));
}

TEST(Zpk2tf, ALoneComplexRootLosesItsImaginaryPart) {
  const Fraction tf = fraction(zpk({{0.5, 2.0}}, {{0.25, -3.0}}, 2.0));
  EXPECT_EQ(tf.b, (Values{2.0, -1.0}));
  EXPECT_EQ(tf.a, (Values{1.0, -0.25}));
}

TEST(Zpk2tf, TheGainScalesTheNumeratorAlone) {
  const Fraction one = fraction(zpk({j, -j}, {0.5, 0.25}, 1.0));
  const Fraction half = fraction(zpk({j, -j}, {0.5, 0.25}, 0.5));
  EXPECT_EQ(half.a, one.a);
  for (std::size_t k = 0; k < one.b.size(); ++k) EXPECT_EQ(half.b[k], 0.5 * one.b[k]);
}

TEST(Zpk2tf, TheSecondArgumentIsNotRead) {
  const Fraction tf = fraction(zpk({2.0}, {0.5}, 1.0), reinterpret_cast<void *>(8));
  EXPECT_EQ(tf.b, (Values{1.0, -2.0}));
  EXPECT_EQ(tf.a, (Values{1.0, -0.5}));
}

TEST(Zpk2tf, IsTheFilterItCameFrom) {
  for (int n = 1; n <= 8; ++n) {
    const Zpk filter = chebyshev2(n, 30.0);
    const Fraction tf = fraction(filter);
    for (const double w : {0.0, 0.4, 1.3, 3.0})
      EXPECT_TRUE(
          close(polynomial(tf.b, w * j) / polynomial(tf.a, w * j), response(filter, w * j), 1e-11))
          << n;
  }
}

}  // namespace
