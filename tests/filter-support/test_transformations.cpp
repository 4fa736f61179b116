#include <gtest/gtest.h>

#include "dense_model.h"
#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

const double frequencies[] = {0.0, 0.2, 0.7, 1.1, 1.9, 3.0, 8.0};
constexpr int highest_order = 10;

std::vector<Zpk> prototypes(int order) {
  std::vector<Zpk> all;
  all.push_back(butterworth(order));
  all.push_back(chebyshev1(order, 1.0));
  all.push_back(chebyshev2(order, 40.0));
  return all;
}
const char *const families[] = {"butterworth", "chebyshev-1", "chebyshev-2"};

/** C A^-1, from A^T x = C^T. */
Values c_over_a(const _statespace *ss) {
  const auto n = static_cast<std::size_t>(ss->a->rows);
  std::vector<std::vector<Complex>> transposed(n, std::vector<Complex>(n));
  for (std::size_t r = 0; r < n; ++r)
    for (std::size_t k = 0; k < n; ++k) transposed[r][k] = ss->a->data[k * n + r];
  Values row;
  for (const Complex x : solved(transposed, {ss->c->data, ss->c->data + n}))
    row.push_back(x.real());
  return row;
}

double times(const Values &row, const _matrix64 *column) {
  double sum = 0.0;
  for (std::size_t i = 0; i < row.size(); ++i) sum += row[i] * column->data[i];
  return sum;
}

void expect_doubled(const Model &ss, int32_t n) {
  EXPECT_EQ(ss->a->cols, 2 * n);
  EXPECT_EQ(ss->a->rows, 2 * n);
  EXPECT_EQ(ss->b->cols, 1);
  ASSERT_EQ(ss->b->rows, 2 * n);
  ASSERT_EQ(ss->c->cols, 2 * n);
  EXPECT_EQ(ss->c->rows, 1);
  EXPECT_EQ(ss->d->cols, 1);
  EXPECT_EQ(ss->d->rows, 1);
  for (int32_t i = n; i < 2 * n; ++i) {
    EXPECT_EQ(ss->b->data[i], 0.0);
    EXPECT_EQ(ss->c->data[i], 0.0);
  }
}

// --- lowpass -------------------------------------------------------------------

TEST(ToLowpass, AtTheEdgeOfThePrototypeNothingChanges) {
  for (const Zpk &prototype : prototypes(5)) {
    const Model before = realised(prototype);
    const Model ss = copy(before.get());
    filtermath_lp2lp(ss.get(), 1.0);
    EXPECT_EQ(stored(ss->a), stored(before->a));
    EXPECT_EQ(stored(ss->b), stored(before->b));
    EXPECT_EQ(stored(ss->c), stored(before->c));
    EXPECT_EQ(stored(ss->d), stored(before->d));
  }
}

TEST(ToLowpass, AModelWithoutStatesStaysAsItIs) {
  const Model ss = realised(butterworth(0));
  filtermath_lp2lp(ss.get(), 3.0);
  EXPECT_EQ(ss->a->rows, 0);
  EXPECT_EQ(ss->b->rows, 0);
  EXPECT_EQ(stored(ss->d), Values{1.0});
}

TEST(ToLowpass, ScalesTheStatesAndLeavesTheOutput) {
  const Model before = dense(3);
  const Model ss = copy(before.get());
  filtermath_lp2lp(ss.get(), 4.0);
  for (int i = 0; i < 9; ++i) EXPECT_EQ(ss->a->data[i], 4.0 * before->a->data[i]);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(ss->b->data[i], 4.0 * before->b->data[i]);
  EXPECT_EQ(stored(ss->c), stored(before->c));
  EXPECT_EQ(stored(ss->d), stored(before->d));
}

TEST(ToLowpass, StretchesTheFrequencyAxis) {
  const double wo = 0.35;
  for (int n = 1; n <= highest_order; ++n) {
    for (const Zpk &prototype : prototypes(n)) {
      const Model ss = realised(prototype);
      filtermath_lp2lp(ss.get(), wo);
      for (const double w : frequencies)
        EXPECT_TRUE(close(response(ss, w * j), response(prototype, w * j / wo), 1e-11)) << n;
    }
  }
}

// --- highpass ------------------------------------------------------------------

TEST(ToHighpass, TheFirstOrderIsDoneByHand) {
  const double wo = 2.5;
  const Model ss = realised(butterworth(1));
  filtermath_lp2hp(ss.get(), wo);
  EXPECT_EQ(stored(ss->a), Values{-wo});
  EXPECT_EQ(stored(ss->b), Values{wo});
  EXPECT_EQ(stored(ss->c), Values{-1.0});
  EXPECT_EQ(stored(ss->d), Values{1.0});
}

TEST(ToHighpass, SwapsZeroAndInfinity) {
  const double wo = 0.7;
  for (int n = 1; n <= highest_order; ++n) {
    for (const Zpk &prototype : prototypes(n)) {
      const Model ss = realised(prototype);
      filtermath_lp2hp(ss.get(), wo);
      EXPECT_TRUE(close(ss->d->data[0], response(prototype, 0.0), 1e-11)) << n;
      for (const double w : frequencies) {
        if (w == 0.0) continue;
        EXPECT_TRUE(close(response(ss, w * j), response(prototype, wo / (w * j)), 1e-10)) << n;
      }
    }
  }
}

TEST(ToHighpass, HoldsForAnyModel) {
  const double wo = 1.7;
  const Model before = dense(4);
  const Model ss = copy(before.get());
  filtermath_lp2hp(ss.get(), wo);
  for (const double w : {0.2, 1.0, 6.0})
    EXPECT_TRUE(close(response(ss, w * j), response(before, wo / (w * j)), 1e-13));
}

TEST(ToHighpass, CarriesOnWithASingularModel) {
  const Watchdog watchdog("lp2hp of a pole at the origin");
  const Model ss = model({{0.0}}, {1.0}, {1.0}, 0.0);
  filtermath_lp2hp(ss.get(), 1.0);
  EXPECT_EQ(ss->a->rows, 1);
  EXPECT_FALSE(std::isfinite(ss->a->data[0]));
}

// --- bandpass ------------------------------------------------------------------

TEST(ToBandpass, DoublesTheStates) {
  for (const int n : {1, 2, 3, 4, 7}) {
    const Model ss = realised(chebyshev2(n, 40.0));
    const double feed_through = ss->d->data[0];
    filtermath_lp2bp(ss.get(), 1.5, 0.5);
    expect_doubled(ss, n);
    EXPECT_EQ(ss->d->data[0], feed_through);
  }
}

TEST(ToBandpass, TurnsTheCentreIntoTheZeroOfThePrototype) {
  const double wo = 1.3;
  const double bw = 0.6;
  for (int n = 1; n <= highest_order; ++n) {
    for (const Zpk &prototype : prototypes(n)) {
      const Model ss = realised(prototype);
      filtermath_lp2bp(ss.get(), wo, bw);
      EXPECT_TRUE(close(response(ss, wo * j), response(prototype, 0.0), 1e-10)) << n;
      for (const double w : frequencies) {
        if (w == 0.0) continue;
        const Complex s = w * j;
        EXPECT_TRUE(close(response(ss, s), response(prototype, (s * s + wo * wo) / (bw * s)), 1e-9))
            << "order " << n << ", w " << w;
      }
    }
  }
}

// The sum of the poles is the trace: positive, it puts one of them on the right.
TEST(ToBandpass, OfNegativeWidthIsUnstable) {
  const Model ss = realised(butterworth(3));
  filtermath_lp2bp(ss.get(), 1.0, -0.5);
  double trace = 0.0;
  for (int i = 0; i < 6; ++i) trace += matrix64_get(ss->a, i, i);
  EXPECT_GT(trace, 0.0);
}

// --- bandstop ------------------------------------------------------------------

TEST(ToBandstop, DoublesTheStates) {
  for (const int n : {1, 2, 3, 4, 7}) {
    for (const char *family : families) {
      const Model ss = realised(butterworth(n));
      filtermath_lp2bs(ss.get(), gensym(family), 1.5, 0.5);
      expect_doubled(ss, n);
    }
  }
}

TEST(ToBandstop, TurnsTheCentreIntoTheInfinityOfThePrototype) {
  const double wo = 1.3;
  const double bw = 0.6;
  for (int n = 1; n <= highest_order; ++n) {
    const std::vector<Zpk> all = prototypes(n);
    for (std::size_t k = 0; k < all.size(); ++k) {
      const Model ss = realised(all[k]);
      filtermath_lp2bs(ss.get(), gensym(families[k]), wo, bw);
      for (const double w : frequencies) {
        const Complex s = w * j;
        EXPECT_TRUE(close(response(ss, s), response(all[k], bw * s / (s * s + wo * wo)), 1e-9))
            << families[k] << ", order " << n << ", w " << w;
      }
    }
  }
}

TEST(ToBandstop, AChebyshev2FeedsThroughExactlyOne) {
  for (const std::size_t n : {1, 2, 3, 4, 5, 6}) {
    const Model ss = dense(n);
    filtermath_lp2bs(ss.get(), gensym("chebyshev-2"), 1.0, 0.5);
    EXPECT_EQ(ss->d->data[0], 1.0) << n << " states";
  }
  for (const int n : {1, 2, 3, 4, 5}) {
    const Model ss = realised(chebyshev1(n, 3.0));
    filtermath_lp2bs(ss.get(), gensym("chebyshev-2"), 1.0, 0.5);
    EXPECT_EQ(ss->d->data[0], 1.0) << "order " << n;
  }
}

TEST(ToBandstop, FourStatesFeedThroughTheWholeProduct) {
  for (const char *family : {"butterworth", "chebyshev-1", "anything else"}) {
    const Model ss = dense(4);
    const double d = ss->d->data[0];
    const Values ca = c_over_a(ss.get());
    const double expected = d - times(ca, ss->b);
    ASSERT_GT(std::abs(expected - (d - ca[0])), 0.01) << "the two rules must differ here";
    filtermath_lp2bs(ss.get(), gensym(family), 1.0, 0.5);
    EXPECT_TRUE(close(ss->d->data[0], expected, 1e-14)) << family;
  }
}

TEST(ToBandstop, OtherNumbersOfStatesFeedThroughTheFirstElementOnly) {
  for (const std::size_t n : {2, 3, 5, 6, 8}) {
    const Model ss = dense(n);
    const double d = ss->d->data[0];
    const Values ca = c_over_a(ss.get());
    const double expected = d - ca[0];
    ASSERT_GT(std::abs(expected - (d - times(ca, ss->b))), 0.01) << "the two rules must differ";
    filtermath_lp2bs(ss.get(), gensym("butterworth"), 1.0, 0.5);
    EXPECT_TRUE(close(ss->d->data[0], expected, 1e-14)) << n << " states";
  }
}

TEST(ToBandstop, AButterworthFeedsThroughByTheRuleForItsOrder) {
  for (const int n : {3, 4, 5}) {
    const Model ss = realised(butterworth(n));
    const Values ca = c_over_a(ss.get());
    const double expected = ss->d->data[0] - (n == 4 ? times(ca, ss->b) : ca[0]);
    filtermath_lp2bs(ss.get(), gensym("butterworth"), 1.0, 0.5);
    EXPECT_TRUE(close(ss->d->data[0], expected, 1e-14)) << "order " << n;
    EXPECT_TRUE(close(ss->d->data[0], 1.0, 1e-14)) << "unity far from the notch";
  }
}

TEST(ToBandstop, CarriesOnWithASingularModel) {
  const Watchdog watchdog("lp2bs of a pole at the origin");
  const Model ss = model({{0.0}}, {1.0}, {1.0}, 0.0);
  filtermath_lp2bs(ss.get(), gensym("butterworth"), 1.0, 0.5);
  expect_doubled(ss, 1);
  EXPECT_FALSE(std::isfinite(ss->a->data[0]));
}

TEST(Transformations, KeepTheMatricesOfTheModel) {
  for (const int which : {0, 1, 2, 3}) {
    const Model ss = realised(butterworth(3));
    const _statespace before = *ss;
    if (which == 0) filtermath_lp2lp(ss.get(), 2.0);
    if (which == 1) filtermath_lp2hp(ss.get(), 2.0);
    if (which == 2) filtermath_lp2bp(ss.get(), 2.0, 1.0);
    if (which == 3) filtermath_lp2bs(ss.get(), gensym("butterworth"), 2.0, 1.0);
    EXPECT_EQ(ss->a, before.a);
    EXPECT_EQ(ss->b, before.b);
    EXPECT_EQ(ss->c, before.c);
    EXPECT_EQ(ss->d, before.d);
  }
}

}  // namespace
