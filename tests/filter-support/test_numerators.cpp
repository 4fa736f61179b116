#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

constexpr int64_t nonsense = -12345;  // for the count that is not read

Values butterworth_numerator(const char *response, int order, const Values &den, double wo) {
  Flat num;
  filtermath_buttnum(gensym(response), order, den.data(), nonsense, &num.data, &num.count, wo);
  return num.values();
}

Values chebyshev1_numerator(const char *response, int order, const Values &den, double wo,
                            double ripple_db) {
  Flat num;
  filtermath_cheby1num(gensym(response), order, den.data(), nonsense, &num.data, &num.count, wo,
                       ripple_db);
  return num.values();
}

Values chebyshev2_numerator(const Model &ss) {
  const Watchdog watchdog("filtermath_cheby2num");
  Flat num;
  filtermath_cheby2num(ss.get(), &num.data, &num.count);
  return num.values();
}

double sum(const Values &values) {
  double total = 0.0;
  for (const double value : values) total += value;
  return total;
}

/** sum(c[k] cos(k w)). */
double cosines(const Values &c, double w) {
  double total = 0.0;
  for (std::size_t k = 0; k < c.size(); ++k) total += c[k] * std::cos(static_cast<double>(k) * w);
  return total;
}

const Values second = {1.0, -0.9, 0.35};
const Values third = {1.0, -0.9, 0.35, -0.1};

TEST(ButterworthNumerator, OfALowpassHasUnityGainAtZero) {
  const Values num = butterworth_numerator("lowpass", 2, second, 1.0);
  ASSERT_EQ(num.size(), 3u);
  const double scale = sum(second) / 4.0;
  EXPECT_TRUE(close(num, {scale, 2.0 * scale, scale}, 1e-15));
  EXPECT_TRUE(close(sum(num), sum(second), 1e-15));
}

TEST(ButterworthNumerator, OfAHighpassHasUnityGainAtNyquist) {
  for (const int order : {2, 3}) {
    const Values &den = order == 2 ? second : third;
    const Values num = butterworth_numerator("highpass", order, den, 1.0);
    ASSERT_EQ(num.size(), den.size());
    EXPECT_TRUE(close(response(num, den, -1.0), 1.0, 1e-14));
    EXPECT_NEAR(std::abs(response(num, den, 1.0)), 0.0, 1e-14) << "and nothing at zero";
  }
}

TEST(ButterworthNumerator, OfABandstopHasUnityGainAtZeroAndANotchAtItsCentre) {
  const double w = 0.3;
  const Values den = {1.0, -0.5, 0.4, -0.2, 0.1};
  const Values num = butterworth_numerator("bandstop", 2, den, prewarped(w));
  ASSERT_EQ(num.size(), 5u);
  EXPECT_TRUE(close(response(num, den, 1.0), 1.0, 1e-14));
  EXPECT_NEAR(std::abs(response(num, den, on_circle(w))), 0.0, 1e-13);
}

TEST(ButterworthNumerator, OfABandpassPassesNeitherZeroNorNyquist) {
  const Values den = {1.0, -0.5, 0.4, -0.2, 0.1};
  const Values num = butterworth_numerator("bandpass", 2, den, prewarped(0.3));
  ASSERT_EQ(num.size(), 5u);
  EXPECT_TRUE(close(Values{num[1], num[3]}, {0.0, 0.0}, 1e-15));
  EXPECT_TRUE(close(Values{num[2] / num[0], num[4] / num[0]}, {-2.0, 1.0}, 1e-15));
}

// At the centre of a band only the cosines are compared. For a denominator that
// belongs to another filter that is not unity gain, and here it must show.
// (z^2 - 1)^n: every other coefficient is 0, the rest are binomials.
TEST(ButterworthNumerator, OfABandpassKeepsItsShapeAtEveryOrder) {
  for (const int order : {5, 64, 200}) {
    Values den(static_cast<std::size_t>(2 * order + 1), 0.0);
    den[0] = 1.0;
    const Values num = butterworth_numerator("bandpass", order, den, 1.0);
    ASSERT_EQ(num.size(), den.size());
    double binomial = num[0];
    for (int k = 0; k <= order; ++k) {
      const auto at = static_cast<std::size_t>(2 * k);
      EXPECT_NEAR(num[at] / binomial, 1.0, 1e-12) << order << ", " << k;
      if (k < order) {
        EXPECT_EQ(num[at + 1], 0.0) << order << ", " << k;
      }
      binomial *= -static_cast<double>(order - k) / (k + 1);
    }
  }
}

TEST(ButterworthNumerator, OfABandpassComparesCosinesOnlyAtItsCentre) {
  const double w = 0.35;
  const Values den = {1.0, 0.3, 0.5};
  const Values num = butterworth_numerator("bandpass", 1, den, prewarped(w));
  const double centre = pi * w;
  const double scale = (1.0 + 0.3 * std::cos(centre) + 0.5 * std::cos(2.0 * centre)) /
                       (1.0 - std::cos(2.0 * centre));
  EXPECT_TRUE(close(num, {scale, 0.0, -scale}, 1e-14));
  EXPECT_TRUE(close(cosines(num, centre), cosines(den, centre), 1e-14));
  EXPECT_GT(std::abs(std::abs(response(num, den, on_circle(w))) - 1.0), 0.01);
}

TEST(ButterworthNumerator, OfAnUnknownResponseIsThatOfALowpass) {
  EXPECT_EQ(butterworth_numerator("comb", 2, second, 1.0),
            butterworth_numerator("lowpass", 2, second, 1.0));
}

TEST(Numerators, ReadOneDenominatorCoefficientForEachOfTheirs) {
  // What follows in memory must not be counted in.
  Values longer = second;
  longer.push_back(1000.0);
  EXPECT_EQ(butterworth_numerator("lowpass", 2, longer, 1.0),
            butterworth_numerator("lowpass", 2, second, 1.0));
}

TEST(Chebyshev1Numerator, OfAnEvenOrderStartsAtTheRipplesBottom) {
  const Values den = {1.0, -0.5, 0.4, -0.2, 0.1};
  const Values num = chebyshev1_numerator("lowpass", 4, den, 1.0, 1.0);
  ASSERT_EQ(num.size(), 5u);
  EXPECT_TRUE(close(response(num, den, 1.0), 0.891250938133745529953, 1e-14));
}

TEST(Chebyshev1Numerator, OfAnOddOrderStartsAtUnity) {
  const Values num = chebyshev1_numerator("lowpass", 3, third, 1.0, 1.0);
  ASSERT_EQ(num.size(), 4u);
  EXPECT_TRUE(close(response(num, third, 1.0), 1.0, 1e-14));
}

TEST(Chebyshev1Numerator, IsTheButterworthOneTimesTheRipplesBottom) {
  const Values den = {1.0, -0.5, 0.4, -0.2, 0.1};
  for (const char *response : {"lowpass", "highpass", "bandpass", "bandstop"}) {
    const bool band = response[0] == 'b';
    for (const int order : {1, 2}) {
      if (!band && order == 1) continue;
      const Values of = {den.begin(), den.begin() + (band ? 2 * order : order) + 1};
      const double bottom = order % 2 == 0 ? std::pow(10.0, -0.15) : 1.0;
      Values expected = butterworth_numerator(response, order, of, 0.8);
      for (double &value : expected) value *= bottom;
      EXPECT_TRUE(close(chebyshev1_numerator(response, order, of, 0.8, 3.0), expected, 1e-15))
          << response << ", order " << order;
    }
  }
}

TEST(Chebyshev1Numerator, OfADesignStartsWhereTheRippleDoes) {
  for (const int order : {3, 4}) {
    const Model ss = realised(chebyshev1(order, 1.0));
    filtermath_lp2lp(ss.get(), prewarped(0.25));
    filtermath_bilinear(ss.get(), 2.0);
    Flat den;
    filtermath_ss2coefs(ss.get(), nullptr, nullptr, &den.data, &den.count);
    const Values num = chebyshev1_numerator("lowpass", order, den.values(), prewarped(0.25), 1.0);
    EXPECT_NEAR(decibels(response(num, den.values(), 1.0)), order == 4 ? -1.0 : 0.0, 1e-9);
    EXPECT_NEAR(decibels(response(num, den.values(), on_circle(0.25))), -1.0, 1e-9);
  }
}

TEST(Chebyshev2Numerator, OverTheDenominatorIsTheResponse) {
  for (int order = 1; order <= 8; ++order) {
    const Model ss = realised(chebyshev2(order, 40.0));
    filtermath_lp2lp(ss.get(), prewarped(0.4));
    filtermath_bilinear(ss.get(), 2.0);
    Flat den;
    filtermath_ss2coefs(ss.get(), nullptr, nullptr, &den.data, &den.count);
    const Values num = chebyshev2_numerator(ss);
    ASSERT_EQ(num.size(), static_cast<std::size_t>(order + 1));
    EXPECT_EQ(num[0], ss->d->data[0]) << "the leading coefficient is the gain";
    for (const double w : {0.0, 0.2, 0.4, 0.7, 0.95})
      EXPECT_TRUE(
          close(response(num, den.values(), on_circle(w)), response(ss, on_circle(w)), 1e-9))
          << "order " << order << ", w " << w;
  }
}

TEST(Chebyshev2Numerator, OfAModelWithoutStatesIsEmpty) {
  EXPECT_TRUE(chebyshev2_numerator(model({}, {}, {}, 0.5)).empty());
}

TEST(Chebyshev2Numerator, WithoutFeedThroughComesBackAllTheSame) {
  EXPECT_EQ(chebyshev2_numerator(model({{0.5}}, {1.0}, {1.0}, 0.0)).size(), 2u);
}

TEST(ButterworthNumerator, ComparesResponsesByIdentity) {
  for (const char *text : {"highpass", "bandpass", "bandstop"}) {
    t_symbol lookalike{text};
    Flat num;
    filtermath_buttnum(&lookalike, 2, second.data(), nonsense, &num.data, &num.count, 1.0);
    EXPECT_EQ(num.values(), butterworth_numerator("lowpass", 2, second, 1.0)) << text;
  }
}

}  // namespace
