#include <gtest/gtest.h>

#include <cstring>

#include "support.h"

namespace {

using namespace support;

// --- the first step of the reduction ---------------------------------------------

struct Reduced {
  int mu = -1;
  int nu = -1;
};

/** Reduces the system matrix of two states with this feed-through. */
Reduced reduced(double d, double tol, int p = 1, int sigma = 0) {
  const Watchdog watchdog("filtermath_ss_tzreduce");
  const Matrix S = matrix({{1.0, -1.0, 2.0}, {0.5, 3.0, -4.0}, {d, 5.0, 6.0}});
  const std::vector<double> before = stored(S.get());
  Reduced r;
  filtermath_ss_tzreduce(S.get(), 1, 2, p, tol, 1, sigma, &r.mu, &r.nu);
  EXPECT_EQ(std::memcmp(S->data, before.data(), sizeof(double) * 9), 0) << "S is only read";
  return r;
}

void expect_untouched_counts(const Reduced &r) {
  EXPECT_EQ(r.mu, 1);
  EXPECT_EQ(r.nu, 2);
}

TEST(Reduction, EndsAtOnceWithFeedThrough) { expect_untouched_counts(reduced(0.5, 1e-12)); }
TEST(Reduction, EndsWithNegativeFeedThrough) { expect_untouched_counts(reduced(-0.5, 1e-12)); }
TEST(Reduction, EndsWithoutFeedThrough) { expect_untouched_counts(reduced(0.0, 1e-12)); }
TEST(Reduction, EndsWithFeedThroughBelowTheTolerance) {
  expect_untouched_counts(reduced(1e-13, 1e-12));
  expect_untouched_counts(reduced(-1e-13, 1e-12));
}
TEST(Reduction, EndsWithoutFeedThroughNorTolerance) { expect_untouched_counts(reduced(0.0, 0.0)); }
TEST(Reduction, EndsWithAFeedThroughOfNaN) {
  expect_untouched_counts(reduced(not_a_number, 1e-12));
  expect_untouched_counts(reduced(0.5, not_a_number));
}
TEST(Reduction, EndsWhenNoInputsAreLeft) { expect_untouched_counts(reduced(0.0, 1e-12, 1, 2)); }
TEST(Reduction, EndsWithoutOutputs) { EXPECT_EQ(reduced(0.5, 1e-12, 0).mu, 0); }

// --- zeros -----------------------------------------------------------------------

t_complex64list transmission_zeros(const Model &ss, bool coefficients) {
  const Zpk record = zpk({9.0, 9.0, 9.0, 9.0, 9.0, 9.0, 9.0, 9.0, 9.0}, {7.0 * j}, 99.0);
  filtermath_ss_tzero(ss.get(), record.get(), coefficients);
  EXPECT_EQ(record->poles, t_complex64list{7.0 * j}) << "poles are left alone";
  if (std::isnan(ss->d->data[0])) {
    EXPECT_TRUE(std::isnan(record->gain));
  } else {
    EXPECT_EQ(record->gain, ss->d->data[0]);
  }
  return record->zeros;
}

/** A model of n states; the sign of the first input weight decides the pivot. */
Model example(std::size_t n, double first_input, double d) {
  std::vector<std::vector<double>> a(n, std::vector<double>(n));
  std::vector<double> b(n);
  std::vector<double> c(n);
  for (std::size_t r = 0; r < n; ++r) {
    for (std::size_t k = 0; k < n; ++k)
      a[r][k] = 0.5 * std::sin(static_cast<double>(1 + 7 * r + 3 * k * k + 2 * r * k * k));
    b[r] = std::cos(static_cast<double>(2 * r + 1));
    c[r] = std::sin(static_cast<double>(r + 2));
  }
  b[0] = first_input;
  return model(a, b, c, d);
}

TEST(TransmissionZeros, OfOneStateIsDoneByHand) {
  const Model ss = model({{0.5}}, {2.0}, {3.0}, 4.0);
  const t_complex64list zeros = transmission_zeros(ss, false);  // 0.5 - 2 * 3 / 4
  ASSERT_EQ(zeros.size(), 1u);
  EXPECT_TRUE(close(zeros[0], -1.0, 1e-15));
}

TEST(TransmissionZeros, StopTheResponse) {
  // The negative one of next to nothing leaves the pencil's second matrix without an
  // inverse that doubles hold.
  for (const double first_input : {0.8, 0.0, -0.8, -1e-300}) {
    // A single state without input would put the zero upon its own pole.
    for (std::size_t n = std::abs(first_input) < 0.1 ? 2 : 1; n <= 8; ++n) {
      const Model ss = example(n, first_input, 0.7);
      const t_complex64list zeros = transmission_zeros(ss, false);
      ASSERT_EQ(zeros.size(), n);
      for (const Complex zero : zeros)
        EXPECT_LT(std::abs(response(ss, zero)), 1e-10) << n << " states, " << first_input;
    }
  }
}

TEST(TransmissionZeros, AsCoefficientsAreOneMoreAndBeginWithOne) {
  for (std::size_t n = 1; n <= 8; ++n) {
    const Model ss = example(n, 0.8, -0.7);
    const t_complex64list coefficients = transmission_zeros(ss, true);
    ASSERT_EQ(coefficients.size(), n + 1);
    EXPECT_EQ(coefficients[0], Complex(1.0, 0.0));
    for (const Complex c : coefficients) EXPECT_EQ(c.imag(), 0.0);
  }
}

TEST(TransmissionZeros, AsCoefficientsAreTheNumeratorOverTheGain) {
  for (const double first_input : {0.8, 0.0, -0.8}) {
    for (std::size_t n = 1; n <= 6; ++n) {
      const Model ss = example(n, first_input, 0.7);
      const t_complex64list numerator = transmission_zeros(ss, true);
      for (const Complex z : {Complex(2.0, 0.0), Complex(0.0, 3.0), Complex(-2.0, 1.0)})
        EXPECT_TRUE(close(0.7 * polynomial(numerator, z) / characteristic(ss->a, z),
                          response(ss, z), 1e-11));
    }
  }
}

TEST(TransmissionZeros, OfAnAllZeroStateMatrixNeedNoTolerance) {
  // D + C B / s = (s + 3) / s * 2
  const t_complex64list zeros = transmission_zeros(model({{0.0}}, {2.0}, {3.0}, 2.0), false);
  ASSERT_EQ(zeros.size(), 1u);
  EXPECT_TRUE(close(zeros[0], -3.0, 1e-15));
}

TEST(TransmissionZeros, WithoutStatesNothingIsTouched) {
  const Model ss = model({}, {}, {}, 3.0);
  for (const bool coefficients : {false, true}) {
    const Zpk record = zpk({1.0, 2.0}, {3.0}, 4.0);
    filtermath_ss_tzero(ss.get(), record.get(), coefficients);
    EXPECT_EQ(record->zeros, (t_complex64list{1.0, 2.0}));
    EXPECT_EQ(record->poles, t_complex64list{3.0});
    EXPECT_EQ(record->gain, 4.0);
  }
}

// --- models that have no such zeros ------------------------------------------------

/** Leaves released blocks of many sizes behind, all full of one value. */
void litter(double value) {
  std::vector<std::vector<double>> blocks;
  for (std::size_t size = 1; size <= 128; ++size) blocks.emplace_back(size, value);
}

/** The zeros of a model must not depend on what memory held before. */
t_complex64list zeros_on_any_heap(const Model &ss, bool coefficients) {
  const Watchdog watchdog("filtermath_ss_tzero");
  litter(1.25);
  const t_complex64list once = transmission_zeros(ss, coefficients);
  litter(-1e10);
  const t_complex64list again = transmission_zeros(ss, coefficients);
  EXPECT_EQ(once.size(), again.size());
  for (std::size_t i = 0; i < std::min(once.size(), again.size()); ++i) {
    EXPECT_TRUE(once[i] == again[i] || (!finite(once[i]) && !finite(again[i])))
        << once[i] << " and " << again[i];
  }
  return once;
}

TEST(TransmissionZeros, WithoutFeedThroughAreStillAsManyAsStates) {
  for (const double d : {0.0, -0.0, 1e-300}) {
    for (std::size_t n = 1; n <= 6; ++n) {
      EXPECT_EQ(zeros_on_any_heap(example(n, 0.8, d), false).size(), n);
      EXPECT_EQ(zeros_on_any_heap(example(n, -0.8, d), true).size(), n + 1);
    }
  }
}

TEST(TransmissionZeros, OfAModelOfNothingButZerosAreStillAsManyAsStates) {
  const Model ss = model({{0.0, 0.0}, {0.0, 0.0}}, {0.0, 0.0}, {0.0, 0.0}, 0.0);
  EXPECT_EQ(zeros_on_any_heap(ss, false).size(), 2u);
  EXPECT_EQ(zeros_on_any_heap(ss, true).size(), 3u);
}

TEST(TransmissionZeros, OfAModelThatIsNotFiniteAreNaN) {
  for (const double bad : {not_a_number, infinity, -infinity}) {
    for (std::size_t n = 1; n <= 6; ++n) {
      const Model ss = example(n, 0.8, 0.7);
      ss->a->data[n * n - 1] = bad;
      const t_complex64list zeros = zeros_on_any_heap(ss, false);
      EXPECT_EQ(zeros.size(), n);
      for (const Complex zero : zeros) EXPECT_TRUE(std::isnan(zero.real())) << zero;
      EXPECT_EQ(zeros_on_any_heap(ss, true).size(), n + 1);
    }
  }
}

TEST(TransmissionZeros, OfAFeedThroughOfNaNAreNaN) {
  const t_complex64list zeros = zeros_on_any_heap(example(3, 0.8, not_a_number), false);
  ASSERT_EQ(zeros.size(), 3u);
  for (const Complex zero : zeros) EXPECT_TRUE(std::isnan(zero.real())) << zero;
}

}  // namespace
