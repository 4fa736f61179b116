#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace support;

const double frequencies[] = {0.0, 0.1, 0.3, 0.5, 0.7, 0.9, 0.99, 1.0, 1.01, 1.2, 2.0, 5.0, 30.0};
constexpr int highest_order = 20;

/** The Chebyshev polynomial of the first kind, T_n(x), for x >= 0. */
double chebyshev(int n, double x) {
  return x <= 1.0 ? std::cos(n * std::acos(x)) : std::cosh(n * std::acosh(x));
}

double power(const Zpk &filter, double w) { return std::norm(response(filter, w * j)); }

bool stable(const Zpk &filter) {
  return std::all_of(filter->poles.begin(), filter->poles.end(),
                     [](Complex pole) { return pole.real() < 0.0; });
}

// --- Butterworth ---------------------------------------------------------------

TEST(Butterworth, OfOrderOneHasItsPoleAtMinusOne) {
  const Zpk filter = butterworth(1);
  EXPECT_TRUE(filter->zeros.empty());
  EXPECT_EQ(filter->poles, t_complex64list{-1.0});
  EXPECT_EQ(filter->gain, 1.0);
}

TEST(Butterworth, OfOrderTwoHasAPairOnTheDiagonals) {
  const Zpk filter = butterworth(2);
  ASSERT_EQ(filter->poles.size(), 2u);
  EXPECT_TRUE(close(filter->poles[0], {-std::sqrt(0.5), std::sqrt(0.5)}, 1e-15));
  EXPECT_EQ(filter->poles[1], std::conj(filter->poles[0]));
  EXPECT_TRUE(close(filter->gain, 1.0, 1e-15));
}

TEST(Butterworth, OfOrderThreeHasThePairFirstAndTheRealPoleLast) {
  const Zpk filter = butterworth(3);
  ASSERT_EQ(filter->poles.size(), 3u);
  EXPECT_TRUE(close(filter->poles[0], std::polar(1.0, 2.0 * pi / 3.0), 1e-15));
  EXPECT_EQ(filter->poles[1], std::conj(filter->poles[0]));
  EXPECT_EQ(filter->poles[2], Complex(-1.0, 0.0));
}

TEST(Butterworth, ListsPairsByGrowingAngleUpperMemberFirst) {
  for (int n = 2; n <= highest_order; ++n) {
    const Zpk filter = butterworth(n);
    ASSERT_EQ(filter->poles.size(), static_cast<std::size_t>(n));
    for (int m = 0; m + 1 < n; m += 2) {
      const Complex upper = filter->poles[static_cast<std::size_t>(m)];
      EXPECT_TRUE(close(upper, std::polar(1.0, pi / 2.0 + (m + 1) * pi / (2.0 * n)), 4e-15));
      EXPECT_EQ(filter->poles[static_cast<std::size_t>(m) + 1], std::conj(upper));
    }
    if (n % 2 == 1) {
      EXPECT_EQ(filter->poles.back(), Complex(-1.0, 0.0)) << "order " << n;
    }
  }
}

TEST(Butterworth, HasTheMaximallyFlatResponse) {
  for (int n = 1; n <= highest_order; ++n) {
    const Zpk filter = butterworth(n);
    EXPECT_TRUE(stable(filter));
    for (const double w : frequencies) {
      const double expected = 1.0 / (1.0 + std::pow(w, 2 * n));
      EXPECT_NEAR(power(filter, w) / expected, 1.0, 1e-12) << "order " << n << ", w " << w;
    }
  }
}

TEST(Butterworth, IsHalfThePowerDownAtOne) {
  for (int n = 1; n <= highest_order; ++n)
    EXPECT_NEAR(decibels(response(butterworth(n), j)), -3.010299956639812, 1e-11) << n;
}

// --- Chebyshev type I ----------------------------------------------------------

TEST(Chebyshev1, OfOrderThreeHasItsRealPoleInTheMiddle) {
  const Zpk filter = chebyshev1(3, 1.0);
  EXPECT_TRUE(filter->zeros.empty());
  ASSERT_EQ(filter->poles.size(), 3u);
  EXPECT_EQ(filter->poles[1].imag(), 0.0);
  EXPECT_GT(filter->poles[0].imag(), 0.0);
  EXPECT_LT(filter->poles[2].imag(), 0.0);
}

TEST(Chebyshev1, OfOrderTwoHasTheGainOfItsPolesLessTheRipple) {
  const Zpk filter = chebyshev1(2, 3.0);
  ASSERT_EQ(filter->poles.size(), 2u);
  EXPECT_TRUE(
      close(filter->gain,
            std::pow(10.0, -3.0 / 20.0) * std::abs(filter->poles[0]) * std::abs(filter->poles[1]),
            1e-15));
}

TEST(Chebyshev1, ListsPolesByGrowingAngleInExactMirrorSymmetry) {
  for (int n = 1; n <= highest_order; ++n) {
    const t_complex64list poles = chebyshev1(n, 0.5)->poles;
    ASSERT_EQ(poles.size(), static_cast<std::size_t>(n));
    for (std::size_t k = 0; k < poles.size(); ++k) {
      EXPECT_EQ(poles[k], std::conj(poles[poles.size() - 1 - k])) << "order " << n;
      if (k > 0) {
        EXPECT_LT(poles[k].imag(), poles[k - 1].imag()) << "order " << n;
      }
    }
  }
}

TEST(Chebyshev1, HasTheEquirippleResponse) {
  for (const double ripple_db : {0.01, 1.0, 6.0}) {
    const double eps2 = std::pow(10.0, 0.1 * ripple_db) - 1.0;
    for (int n = 1; n <= highest_order; ++n) {
      const Zpk filter = chebyshev1(n, ripple_db);
      EXPECT_TRUE(stable(filter));
      for (const double w : frequencies) {
        const double expected = 1.0 / (1.0 + eps2 * std::pow(chebyshev(n, w), 2));
        EXPECT_NEAR(power(filter, w) / expected, 1.0, 1e-11)
            << ripple_db << " dB, order " << n << ", w " << w;
      }
    }
  }
}

TEST(Chebyshev1, StartsAtTheRipplesBottomForEvenOrdersAndAtItsTopForOdd) {
  for (int n = 1; n <= highest_order; ++n)
    EXPECT_NEAR(decibels(response(chebyshev1(n, 2.0), 0.0)), n % 2 == 0 ? -2.0 : 0.0, 1e-11) << n;
}

TEST(Chebyshev1, WithoutRippleHasNoFinitePoles) {
  const t_complex64list poles = chebyshev1(4, 0.0)->poles;
  ASSERT_EQ(poles.size(), 4u);
  for (const Complex pole : poles) EXPECT_FALSE(finite(pole));
}

// --- Chebyshev type II ---------------------------------------------------------

TEST(Chebyshev2, OfOrderThreeHasOnePairOfZerosAndThreePoles) {
  const Zpk filter = chebyshev2(3, 40.0);
  ASSERT_EQ(filter->zeros.size(), 2u);
  EXPECT_EQ(filter->zeros[0].real(), 0.0);
  EXPECT_GT(filter->zeros[0].imag(), 0.0);
  EXPECT_EQ(filter->zeros[1], std::conj(filter->zeros[0]));
  EXPECT_EQ(filter->poles.size(), 3u);
}

TEST(Chebyshev2, OfOrderOneIsOneRealPole) {
  const Zpk filter = chebyshev2(1, 40.0);
  EXPECT_TRUE(filter->zeros.empty());
  ASSERT_EQ(filter->poles.size(), 1u);
  EXPECT_EQ(filter->poles[0].imag(), 0.0);
  EXPECT_EQ(filter->gain, -filter->poles[0].real());
}

TEST(Chebyshev2, OfOrderFourListsPairsOfZerosByGrowingMagnitude) {
  const t_complex64list zeros = chebyshev2(4, 40.0)->zeros;
  ASSERT_EQ(zeros.size(), 4u);
  const double near = 1.0 / std::cos(pi / 8.0);
  const double far = 1.0 / std::cos(3.0 * pi / 8.0);
  EXPECT_TRUE(close(zeros[0], near * j, 1e-15));
  EXPECT_TRUE(close(zeros[1], -near * j, 1e-15));
  EXPECT_TRUE(close(zeros[2], far * j, 1e-15));
  EXPECT_TRUE(close(zeros[3], -far * j, 1e-15));
}

TEST(Chebyshev2, ListsPairsOfZerosUpperMemberFirstForEveryOrder) {
  for (int n = 2; n <= highest_order; ++n) {
    const t_complex64list zeros = chebyshev2(n, 40.0)->zeros;
    ASSERT_EQ(zeros.size(), static_cast<std::size_t>(n - n % 2));
    for (std::size_t k = 0; k < zeros.size(); k += 2) {
      const double expected = 1.0 / std::cos(static_cast<double>(k + 1) * pi / (2.0 * n));
      EXPECT_TRUE(close(zeros[k], expected * j, 1e-14)) << "order " << n;
      EXPECT_EQ(zeros[k + 1], std::conj(zeros[k])) << "order " << n;
    }
  }
}

TEST(Chebyshev2, ListsPolesByGrowingAngleOfTheirReciprocals) {
  for (int n = 2; n <= highest_order; ++n) {
    const t_complex64list poles = chebyshev2(n, 40.0)->poles;
    ASSERT_EQ(poles.size(), static_cast<std::size_t>(n));
    for (std::size_t k = 1; k < poles.size(); ++k)
      EXPECT_LT((1.0 / poles[k]).imag(), (1.0 / poles[k - 1]).imag()) << "order " << n;
    if (n % 2 == 1) {
      EXPECT_EQ(poles[poles.size() / 2].imag(), 0.0) << "order " << n;
    }
  }
}

TEST(Chebyshev2, HasTheInverseResponse) {
  for (const double attenuation_db : {3.0, 20.0, 80.0}) {
    const double eps2 = 1.0 / (std::pow(10.0, 0.1 * attenuation_db) - 1.0);
    for (int n = 1; n <= highest_order; ++n) {
      const Zpk filter = chebyshev2(n, attenuation_db);
      EXPECT_TRUE(stable(filter));
      for (const double w : frequencies) {
        if (w == 0.0) continue;
        const double t2 = eps2 * std::pow(chebyshev(n, 1.0 / w), 2);
        // Beside a zero the magnitude is small against the terms it comes from.
        EXPECT_NEAR(power(filter, w), t2 / (1.0 + t2), 1e-11)
            << attenuation_db << " dB, order " << n << ", w " << w;
      }
    }
  }
}

TEST(Chebyshev2, PassesUnityAtZeroAndReachesItsAttenuationAtOne) {
  for (int n = 1; n <= highest_order; ++n) {
    const Zpk filter = chebyshev2(n, 60.0);
    EXPECT_NEAR(decibels(response(filter, 0.0)), 0.0, 1e-11) << n;
    EXPECT_NEAR(decibels(response(filter, j)), -60.0, 1e-8) << n;
  }
}

TEST(Chebyshev2, WithNegativeAttenuationHasNoFinitePoles) {
  const t_complex64list poles = chebyshev2(4, -1.0)->poles;
  ASSERT_EQ(poles.size(), 4u);
  for (const Complex pole : poles) EXPECT_FALSE(finite(pole));
}

// --- all -----------------------------------------------------------------------

TEST(Prototypes, OfOrdersBelowOneHaveNoRoots) {
  for (const int n : {0, -1, -2}) {
    for (const Zpk &filter : {butterworth(n), chebyshev1(n, 1.0), chebyshev2(n, 40.0)}) {
      EXPECT_TRUE(filter->zeros.empty()) << n;
      EXPECT_TRUE(filter->poles.empty()) << n;
    }
  }
  EXPECT_EQ(butterworth(0)->gain, 1.0);
  EXPECT_TRUE(close(chebyshev1(0, 6.0)->gain, std::pow(10.0, -0.3), 1e-15));
  EXPECT_EQ(chebyshev2(0, 40.0)->gain, 1.0);
}

TEST(Prototypes, DoNotReadWhatWasThereBefore) {
  t_zpk *const nowhere = reinterpret_cast<t_zpk *>(8);
  t_zpk *out = nowhere;
  filtermath_buttap(2, &out);
  EXPECT_EQ(Zpk(out)->poles.size(), 2u);
  out = nowhere;
  filtermath_cheby1ap(2, &out, 1.0);
  EXPECT_EQ(Zpk(out)->poles.size(), 2u);
  out = nowhere;
  filtermath_cheby2ap(2, &out, 40.0);
  EXPECT_EQ(Zpk(out)->poles.size(), 2u);
}

// It takes nothing and yields nothing: that it returns is all there is to see.
TEST(Prototypes, TheBesselFamilyIsReserved) {
  static_assert(std::is_same_v<decltype(filtermath_besselap), void()>);
  const Zpk before = butterworth(5);
  filtermath_besselap();
  const Zpk after = butterworth(5);
  EXPECT_EQ(before->poles, after->poles);
  EXPECT_EQ(before->gain, after->gain);
}

}  // namespace
