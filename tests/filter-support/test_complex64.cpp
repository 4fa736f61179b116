#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support.h"

namespace {

using namespace support;

const t_complex64list unsorted = {{1.0, -2.0}, {-3.0, 0.0}, {1.0, 2.0}, {1.0, 0.0}};

TEST(RootOrder, AscendsByRealPartWithTheUpperOfAPairFirst) {
  t_complex64list roots = unsorted;
  std::sort(roots.begin(), roots.end(), complex64_cmp);
  EXPECT_EQ(roots, (t_complex64list{{-3.0, 0.0}, {1.0, 2.0}, {1.0, 0.0}, {1.0, -2.0}}));
}

TEST(RootOrder, ReversedDescendsByRealPartWithTheLowerOfAPairFirst) {
  t_complex64list roots = unsorted;
  std::sort(roots.begin(), roots.end(), complex64_cmp_reverse);
  EXPECT_EQ(roots, (t_complex64list{{1.0, -2.0}, {1.0, 0.0}, {1.0, 2.0}, {-3.0, 0.0}}));
}

TEST(RootOrder, NoRootGoesBeforeItself) {
  for (const Complex x : {Complex(0.0, 0.0), Complex(-0.0, 0.0), Complex(1.0, -2.0),
                          Complex(infinity, 1.0), Complex(-infinity, -infinity)}) {
    EXPECT_FALSE(complex64_cmp(x, x)) << x;
    EXPECT_FALSE(complex64_cmp_reverse(x, x)) << x;
  }
}

TEST(RootOrder, ZerosOfEitherSignAreTheSameRealPart) {
  EXPECT_TRUE(complex64_cmp({-0.0, 1.0}, {0.0, -1.0}));
  EXPECT_TRUE(complex64_cmp({0.0, 1.0}, {-0.0, -1.0}));
  EXPECT_FALSE(complex64_cmp({-0.0, -1.0}, {0.0, 1.0}));
  EXPECT_FALSE(complex64_cmp({-0.0, 1.0}, {0.0, 1.0}));
}

TEST(RootOrder, RealPartsThatCannotBeComparedCountAsEqual) {
  EXPECT_TRUE(complex64_cmp({not_a_number, 2.0}, {1.0, 1.0}));
  EXPECT_FALSE(complex64_cmp({1.0, 1.0}, {not_a_number, 2.0}));
  EXPECT_TRUE(complex64_cmp_reverse({not_a_number, 1.0}, {1.0, 2.0}));
}

TEST(PairOrder, AscendsByKeyAlone) {
  const t_complex64pair low{{9.0, 9.0}, {9.0, 9.0}, 0.5};
  const t_complex64pair high{{0.0, 0.0}, {0.0, 0.0}, 0.75};
  EXPECT_TRUE(complex64pair_cmp(low, high));
  EXPECT_FALSE(complex64pair_cmp(high, low));
  EXPECT_FALSE(complex64pair_cmp(low, low));
  t_complex64pair same = high;
  same.key = low.key;
  EXPECT_FALSE(complex64pair_cmp(low, same));
  EXPECT_FALSE(complex64pair_cmp(same, low));
}

// Few values, so that ties come up.
Complex some_root() {
  const auto [re, im] = *rc::gen::pair(rc::gen::element(-1.5, -0.0, 0.0, 2.0),
                                       rc::gen::element(-1.0, -0.0, 0.0, 1.0));
  return {re, im};
}

template <typename Value, typename Before>
void expect_strict_weak_order(const Value &x, const Value &y, const Value &z, Before before) {
  const auto tied = [&](const Value &a, const Value &b) { return !before(a, b) && !before(b, a); };
  RC_ASSERT(!before(x, x));
  RC_ASSERT(!(before(x, y) && before(y, x)));
  if (before(x, y) && before(y, z)) RC_ASSERT(before(x, z));
  if (tied(x, y) && tied(y, z)) RC_ASSERT(tied(x, z));
}

RC_GTEST_PROP(RootOrder, IsAStrictWeakOrderBothWays, ()) {
  const Complex x = some_root();
  const Complex y = some_root();
  const Complex z = some_root();
  expect_strict_weak_order(x, y, z, complex64_cmp);
  expect_strict_weak_order(x, y, z, complex64_cmp_reverse);
  RC_ASSERT(complex64_cmp_reverse(x, y) == complex64_cmp(y, x));
}

RC_GTEST_PROP(PairOrder, IsAStrictWeakOrder, ()) {
  const auto pair = [] {
    return t_complex64pair{some_root(), some_root(), *rc::gen::element(-0.0, 0.0, 1.0, 2.0)};
  };
  expect_strict_weak_order(pair(), pair(), pair(), complex64pair_cmp);
}

TEST(RootProduct, FollowsThePlainFormula) {
  EXPECT_EQ(filtermath_product({1.0, 2.0}, {3.0, -5.0}), Complex(13.0, 1.0));
  EXPECT_EQ(filtermath_product(j, j), Complex(-1.0, 0.0));
}

// The language's own product would make an infinity of this.
TEST(RootProduct, DoesNotRescueInfiniteOperands) {
  const Complex product = filtermath_product({infinity, infinity}, {1.0, 0.0});
  EXPECT_TRUE(std::isnan(product.real()));
  EXPECT_TRUE(std::isnan(product.imag()));
}

}  // namespace
