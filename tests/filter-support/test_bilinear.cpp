#include <gtest/gtest.h>

#include "precise.h"
#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

TEST(Bilinear, OneStateIsDoneByHand) {
  const Model ss = model({{-1.0}}, {1.0}, {1.0}, 0.0);
  filtermath_bilinear(ss.get(), 2.0);
  EXPECT_TRUE(close(ss->a->data[0], 0.6, 1e-15));
  EXPECT_TRUE(close(ss->b->data[0], 0.7071067811865475 * 0.8, 1e-15));
  EXPECT_TRUE(close(ss->c->data[0], 0.7071067811865476 * 0.8, 1e-15));
  EXPECT_TRUE(close(ss->d->data[0], 0.2, 1e-15));
}

// With T = 0.5 the quotient T / sqrt(T) lies one unit in the last place below
// sqrt(T). An integrator leaves both factors bare.
TEST(Bilinear, TheInputGetsTheQuotientAndTheOutputTheRoot) {
  const Model ss = model({{0.0}}, {1.0}, {1.0}, 0.0);
  filtermath_bilinear(ss.get(), 2.0);
  EXPECT_EQ(ss->a->data[0], 1.0);
  EXPECT_EQ(ss->b->data[0], 0.7071067811865475);
  EXPECT_EQ(ss->c->data[0], 0.7071067811865476);
  EXPECT_LT(ss->b->data[0], ss->c->data[0]);
  EXPECT_EQ(ss->d->data[0], 0.25);
}

TEST(Bilinear, EveryInputWeightIsCarriedOver) {
  const Model ss = model({{0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, {0.0, 0.0, 0.0}}, {1.0, 2.0, 4.0},
                         {8.0, 16.0, 32.0}, 1.0);
  filtermath_bilinear(ss.get(), 1.0);
  EXPECT_EQ(stored(ss->b), (Values{1.0, 2.0, 4.0}));
  EXPECT_EQ(stored(ss->c), (Values{8.0, 16.0, 32.0}));
  EXPECT_EQ(ss->d->data[0], 1.0 + 0.5 * (8.0 + 32.0 + 128.0));
}

TEST(Bilinear, KeepsTheResponseAtTheMappedFrequencies) {
  for (const double fs : {0.5, 1.0, 2.0, 48000.0}) {
    for (int n = 1; n <= 10; ++n) {
      for (const Zpk &prototype : {butterworth(n), chebyshev1(n, 1.0), chebyshev2(n, 40.0)}) {
        const Model analog = realised(prototype);
        filtermath_lp2lp(analog.get(), fs);
        const Model digital = copy(analog.get());
        filtermath_bilinear(digital.get(), fs);
        for (const double w : {0.0, 0.1, 0.3, 0.6, 0.9}) {
          const Complex z = on_circle(w);
          EXPECT_TRUE(close(response(digital, z),
                            response(analog, 2.0 * fs * (z - 1.0) / (z + 1.0)), 1e-10))
              << "fs " << fs << ", order " << n << ", w " << w;
        }
      }
    }
  }
}

// The feed-through is the product of those of the sections, of 1e-57 here. Added up
// from terms of about 1, it would be rounding: 800 dB too much.
TEST(Bilinear, KeepsTheLevelOfAHighpassOfHighOrder) {
  for (const int order : {8, 16, 50}) {
    const Model ss = realised(butterworth(order));
    filtermath_lp2hp(ss.get(), prewarped(0.95));
    filtermath_bilinear(ss.get(), 2.0);
    // The sections pass Nyquist with (1 + 1) / (1 + p) for each pole p.
    Flat zeros, poles;
    double gain = 0.0;
    filtermath_ss2zpk_butterworth(ss.get(), gensym("highpass"), &zeros.data, &zeros.count,
                                  &poles.data, &poles.count, &gain, 0.0);
    Complex nyquist = gain;
    for (const Complex pole : poles.roots()) nyquist *= -2.0 / (-1.0 - pole);
    EXPECT_TRUE(close(nyquist, 1.0, 1e-10)) << order;
  }
}

// Two first-order sections in parallel, whose feed-throughs cancel to within 1e-9.
TEST(Bilinear, AFeedThroughThatCancelsInAnotherModelIsTheSum) {
  const Model ss = model({{-1.0, 0.0}, {0.0, -3.0}}, {1.0, 1.0}, {1.0, 1.0}, 0.0);
  ss->d->data[0] = -(0.25 / 1.25 + 0.25 / 1.75) + 1e-9;
  filtermath_bilinear(ss.get(), 2.0);
  EXPECT_NEAR(ss->d->data[0], 1e-9, 1e-16);
}

// Nor is it that of a series which something else is added to.
TEST(Bilinear, AFeedThroughOutsideASeriesIsKept) {
  const Model series = realised(butterworth(8));
  filtermath_lp2hp(series.get(), prewarped(0.95));
  const Model more = copy(series.get());
  more->d->data[0] += 1e-6;
  filtermath_bilinear(series.get(), 2.0);
  filtermath_bilinear(more.get(), 2.0);
  EXPECT_NEAR(more->d->data[0] - series->d->data[0], 1e-6, 1e-15);
}

// What is left of D ranges from nothing to far more than there was; half of it and about
// as much are where another formula takes over.
TEST(Bilinear, AFeedThroughKeepsItsDigitsWhateverIsLeftOfIt) {
  for (const double pole : {-1e-3, -0.5, -4.0, -100.0, -1e5}) {
    for (const double zero : {-1e-6, -1e-3, -0.5, -3.9, -4.1, -100.0, -1e5, 2.0}) {
      // (s - zero) / (s - pole), with the difference in C alone.
      const Model ss = model({{pole}}, {1.0}, {pole - zero}, 1.0);
      const double expected = precise::discrete_feed_through(ss.get());
      filtermath_bilinear(ss.get(), 2.0);
      EXPECT_NEAR(ss->d->data[0], expected,
                  4e-16 * (1.0 + std::abs(pole / (4.0 - zero))) * std::abs(expected))
          << pole << ", " << zero;
    }
  }
}

TEST(Bilinear, AFeedThroughOfAnyModelIsTheSumToWithinItsRounding) {
  for (std::size_t n = 1; n <= 6; ++n) {
    for (const double d : {1e-9, 0.3, -0.7, 50.0}) {
      std::vector<std::vector<double>> a(n, std::vector<double>(n));
      std::vector<double> b(n);
      std::vector<double> c(n);
      for (std::size_t r = 0; r < n; ++r) {
        for (std::size_t k = 0; k < n; ++k)
          a[r][k] = std::sin(static_cast<double>(1 + 5 * r + 3 * k + 2 * r * k * k));
        b[r] = 3.0 * std::cos(static_cast<double>(2 * r + 1));
        c[r] = 3.0 * std::sin(static_cast<double>(r + 2));
      }
      const Model ss = model(a, b, c, d);
      const double expected = precise::discrete_feed_through(ss.get());
      filtermath_bilinear(ss.get(), 2.0);
      EXPECT_NEAR(ss->d->data[0], expected, 1e-14 * (std::abs(d) + 10.0)) << n << ", " << d;
    }
  }
}

// Nothing is left of D here: the inverse system that would keep its digits does not exist.
TEST(Bilinear, AFeedThroughOfNothingIsNothing) {
  const Model ss = model({{-4.0}}, {1.0}, {-8.0}, 1.0);  // (s - 4) / (s + 4)
  filtermath_bilinear(ss.get(), 2.0);
  EXPECT_NEAR(ss->d->data[0], 0.0, 1e-16);
  // One of two zeros at 4: that inverse then has elements that are NaN.
  const Model two = model({{-4.0, 1.0}, {-7.0, 3.0}}, {1.0, 1.0}, {-8.0, 1.0}, 1.0);
  filtermath_bilinear(two.get(), 2.0);
  EXPECT_NEAR(two->d->data[0], 0.0, 1e-15);
}

TEST(Bilinear, KeepsTheMatricesOfTheModel) {
  const Model ss = realised(butterworth(3));
  const _statespace before = *ss;
  filtermath_bilinear(ss.get(), 2.0);
  EXPECT_EQ(ss->a, before.a);
  EXPECT_EQ(ss->b, before.b);
  EXPECT_EQ(ss->c, before.c);
  EXPECT_EQ(ss->d, before.d);
  EXPECT_EQ(ss->a->rows, 3);
  EXPECT_EQ(ss->b->cols, 1);
  EXPECT_EQ(ss->b->rows, 3);
  EXPECT_EQ(ss->c->cols, 3);
  EXPECT_EQ(ss->c->rows, 1);
}

TEST(Bilinear, APoleAtTwiceTheSamplingRateGivesNothingFinite) {
  const Watchdog watchdog("the bilinear transform of a pole at infinity");
  const Model ss = model({{4.0}}, {1.0}, {1.0}, 0.0);
  filtermath_bilinear(ss.get(), 2.0);
  for (const _matrix64 *m : {ss->a, ss->b, ss->c, ss->d}) EXPECT_FALSE(std::isfinite(m->data[0]));
}

TEST(Bilinear, ASamplingRateOfZeroGivesNothingFinite) {
  const Watchdog watchdog("the bilinear transform at no sampling rate");
  const Model ss = model({{-1.0}}, {1.0}, {1.0}, 0.0);
  filtermath_bilinear(ss.get(), 0.0);
  EXPECT_FALSE(std::isfinite(ss->a->data[0]));
  EXPECT_FALSE(std::isfinite(ss->b->data[0]));
}

}  // namespace
