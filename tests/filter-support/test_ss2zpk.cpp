#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace support;

struct Found {
  std::vector<Complex> zeros;
  std::vector<Complex> poles;
  double gain = 99.0;
};

Found general_route(const Model &ss) {
  const Watchdog watchdog("filtermath_ss2zpk");
  Found found;
  Flat zeros;
  Flat poles;
  filtermath_ss2zpk(ss.get(), &zeros.data, &zeros.count, &poles.data, &poles.count, &found.gain);
  EXPECT_EQ(zeros.count % 2, 0);
  EXPECT_EQ(poles.count % 2, 0);
  found.zeros = zeros.roots();
  found.poles = poles.roots();
  return found;
}

Found shortcut(const Model &ss, const char *response, double w0 = 0.0) {
  const Watchdog watchdog("filtermath_ss2zpk_butterworth");
  Found found;
  Flat zeros;
  Flat poles;
  filtermath_ss2zpk_butterworth(ss.get(), gensym(response), &zeros.data, &zeros.count, &poles.data,
                                &poles.count, &found.gain, w0);
  EXPECT_EQ(zeros.count, poles.count);
  found.zeros = zeros.roots();
  found.poles = poles.roots();
  return found;
}

/** A digital model with n states; what it filters does not matter. */
Model diagonal(std::size_t n) {
  std::vector<std::vector<double>> a(n, std::vector<double>(n));
  for (std::size_t i = 0; i < n; ++i) a[i][i] = 0.1 * static_cast<double>(i + 1);
  return model(a, std::vector<double>(n, 1.0), std::vector<double>(n, 1.0), 0.3);
}

void expect_eigenvalues(const std::vector<Complex> &poles, const Model &ss) {
  EXPECT_EQ(poles.size(), static_cast<std::size_t>(ss->a->rows));
  for (const Complex z : {Complex(2.0, 0.0), Complex(0.0, 2.0), Complex(-1.5, 1.0)}) {
    Complex product = 1.0;
    for (const Complex pole : poles) product *= z - pole;
    EXPECT_TRUE(close(product, characteristic(ss->a, z), 1e-12));
  }
}

Model digital(const Zpk &prototype) {
  Model ss = realised(prototype);
  filtermath_lp2lp(ss.get(), prewarped(0.3));
  filtermath_bilinear(ss.get(), 2.0);
  return ss;
}

TEST(Shortcut, ALowpassOfThirdOrderHasThreeZerosAtMinusOne) {
  const Model ss = digital(butterworth(3));
  const Found found = shortcut(ss, "lowpass");
  EXPECT_EQ(found.zeros, (std::vector<Complex>{-1.0, -1.0, -1.0}));
  expect_eigenvalues(found.poles, ss);
}

TEST(Shortcut, AHighpassHasAllZerosAtOne) {
  for (std::size_t n = 1; n <= 5; ++n)
    EXPECT_EQ(shortcut(diagonal(n), "highpass").zeros, std::vector<Complex>(n, 1.0));
}

TEST(Shortcut, ABandpassHasHalfTheZerosAtEitherEnd) {
  EXPECT_EQ(shortcut(diagonal(4), "bandpass").zeros, (std::vector<Complex>{1.0, 1.0, -1.0, -1.0}));
}

TEST(Shortcut, ABandpassOfOddSizeHasTheExtraZeroAtMinusOne) {
  EXPECT_EQ(shortcut(diagonal(5), "bandpass").zeros,
            (std::vector<Complex>{1.0, 1.0, -1.0, -1.0, -1.0}));
}

TEST(Shortcut, ABandstopAtAQuarterOfTheRateNotchesAtPlusAndMinusJ) {
  const std::vector<Complex> zeros = shortcut(diagonal(5), "bandstop", 4.0).zeros;
  ASSERT_EQ(zeros.size(), 5u);
  for (std::size_t i = 0; i < zeros.size(); ++i)
    EXPECT_TRUE(close(zeros[i], i % 2 == 0 ? j : -j, 1e-15)) << i;
}

TEST(Shortcut, ABandstopNotchesWhereTheBilinearTransformPutsItsCentre) {
  for (const double w : {0.01, 0.2, 0.5, 0.77, 0.99}) {
    const std::vector<Complex> zeros = shortcut(diagonal(4), "bandstop", prewarped(w)).zeros;
    ASSERT_EQ(zeros.size(), 4u);
    for (std::size_t i = 0; i < zeros.size(); i += 2) {
      EXPECT_TRUE(close(zeros[i], on_circle(w), 1e-14)) << w;
      EXPECT_EQ(zeros[i + 1], std::conj(zeros[i])) << w;
    }
  }
}

TEST(Shortcut, TheGainIsTheFeedThroughAsItStands) {
  for (const char *response : {"lowpass", "highpass", "bandpass", "bandstop"}) {
    const Model ss = diagonal(3);
    ss->d->data[0] = 0.1234567890123456789;
    EXPECT_EQ(shortcut(ss, response, 1.0).gain, ss->d->data[0]) << response;
  }
}

TEST(Shortcut, AnUnknownResponseIsALowpass) {
  EXPECT_EQ(shortcut(diagonal(2), "allpass").zeros, (std::vector<Complex>{-1.0, -1.0}));
  EXPECT_EQ(shortcut(diagonal(2), "HIGHPASS").zeros, (std::vector<Complex>{-1.0, -1.0}));
}

TEST(Shortcut, OnlyABandstopNeedsTheCentre) {
  for (const char *response : {"lowpass", "highpass", "bandpass"})
    EXPECT_EQ(shortcut(diagonal(4), response, not_a_number).zeros,
              shortcut(diagonal(4), response, 1.0).zeros);
}

TEST(Shortcut, DescribesTheModel) {
  for (int n = 1; n <= 8; ++n) {
    for (const Zpk &prototype : {butterworth(n), chebyshev1(n, 1.0)}) {
      const Model ss = digital(prototype);
      const Found found = shortcut(ss, "lowpass");
      const Zpk filter = zpk(found.zeros, found.poles, found.gain);
      for (const double w : {0.0, 0.2, 0.4, 0.8})
        EXPECT_TRUE(close(response(filter, on_circle(w)), response(ss, on_circle(w)), 1e-9)) << n;
    }
  }
}

TEST(GeneralRoute, DescribesTheModel) {
  for (int n = 1; n <= 8; ++n) {
    const Model ss = digital(chebyshev2(n, 40.0));
    const Found found = general_route(ss);
    EXPECT_EQ(found.gain, ss->d->data[0]);
    EXPECT_EQ(found.zeros.size(), static_cast<std::size_t>(n));
    expect_eigenvalues(found.poles, ss);
    const Zpk filter = zpk(found.zeros, found.poles, found.gain);
    for (const double w : {0.0, 0.2, 0.4, 0.8})
      EXPECT_TRUE(close(response(filter, on_circle(w)), response(ss, on_circle(w)), 1e-9)) << n;
  }
}

TEST(GeneralRoute, FindsTheZerosOfTheTransmission) {
  const Model ss = model({{0.5, 0.1}, {-0.2, 0.3}}, {1.0, 2.0}, {0.5, -1.0}, 0.8);
  const Zpk record = zpk({}, {});
  filtermath_ss_tzero(ss.get(), record.get(), false);
  const Found found = general_route(ss);
  EXPECT_EQ(found.zeros, record->zeros) << "and in the same order";
  EXPECT_EQ(found.gain, record->gain);
}

TEST(GeneralRoute, LeavesTheModelAsItWas) {
  const Model ss = digital(chebyshev2(4, 40.0));
  const Model before = copy(ss.get());
  general_route(ss);
  shortcut(ss, "lowpass");
  EXPECT_EQ(stored(ss->a), stored(before->a));
  EXPECT_EQ(stored(ss->b), stored(before->b));
  EXPECT_EQ(stored(ss->c), stored(before->c));
  EXPECT_EQ(stored(ss->d), stored(before->d));
}

TEST(BothRoutes, OfAModelWithoutStatesFindNoRoots) {
  const Model ss = model({}, {}, {}, 0.5);
  const Found general = general_route(ss);
  EXPECT_TRUE(general.zeros.empty());
  EXPECT_TRUE(general.poles.empty());
  const Found quick = shortcut(ss, "lowpass");
  EXPECT_TRUE(quick.zeros.empty());
  EXPECT_TRUE(quick.poles.empty());
  EXPECT_EQ(quick.gain, 0.5);
}

TEST(BothRoutes, OfAModelThatIsNotFiniteFindPolesThatAreNaN) {
  for (const double bad : {not_a_number, infinity, -infinity}) {
    for (std::size_t n = 1; n <= 6; ++n) {
      const Model ss = diagonal(n);
      ss->a->data[n - 1] = bad;
      for (const Found &found : {general_route(ss), shortcut(ss, "lowpass")}) {
        EXPECT_EQ(found.poles.size(), n);
        for (const Complex pole : found.poles) EXPECT_TRUE(std::isnan(pole.real())) << pole;
      }
    }
  }
}

// 0.5 +- sqrt(-product) of what ties two states to each other.
TEST(BothRoutes, KeepImaginaryPartsHoweverSmall) {
  for (const double imaginary : {1e-7, 1e-10, 1e-15, 1e-30, 1e-100}) {
    const Model ss =
        model({{0.5, -imaginary * imaginary}, {1.0, 0.5}}, {1.0, 0.0}, {1.0, 1.0}, 0.3);
    for (const Found &found : {general_route(ss), shortcut(ss, "lowpass")}) {
      ASSERT_EQ(found.poles.size(), 2u);
      for (const Complex pole : found.poles) {
        EXPECT_EQ(pole.real(), 0.5);
        EXPECT_NEAR(std::abs(pole.imag()) / imaginary, 1.0, 1e-15);
      }
      EXPECT_EQ(found.poles[0], std::conj(found.poles[1]));
    }
  }
}

TEST(Shortcut, ComparesResponsesByIdentity) {
  for (const char *text : {"highpass", "bandpass", "bandstop"}) {
    t_symbol lookalike{text};
    const Model ss = diagonal(2);
    Flat zeros;
    Flat poles;
    double gain = 0.0;
    filtermath_ss2zpk_butterworth(ss.get(), &lookalike, &zeros.data, &zeros.count, &poles.data,
                                  &poles.count, &gain, 1.0);
    EXPECT_EQ(zeros.roots(), (std::vector<Complex>{-1.0, -1.0})) << text;
  }
}

TEST(BothRoutes, FindPolesInConjugatePairs) {
  const Model ss = digital(butterworth(6));
  for (const Found &found : {general_route(ss), shortcut(ss, "lowpass")}) {
    for (const Complex pole : found.poles)
      EXPECT_EQ(std::count(found.poles.begin(), found.poles.end(), std::conj(pole)), 1) << pole;
  }
}

}  // namespace
