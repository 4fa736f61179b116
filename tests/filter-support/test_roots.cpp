#include <gtest/gtest.h>

#include <cmath>
#include <complex>

#include "roots.h"

namespace {

using Complex = std::complex<double>;

TEST(ExpandingOrder, TakesPairsFromBothEndsInTurn) {
  const Complex a(1, 1);
  const Complex b(2, 1);
  const Complex c(3, 0);
  const Complex d(4, 1);
  EXPECT_EQ(filtermath::in_expanding_order({a, std::conj(a), b, std::conj(b), c, d, std::conj(d)}),
            (t_complex64list{a, std::conj(a), d, std::conj(d), b, std::conj(b), c}));
}

TEST(JoinedConjugates, AreNeighboursWhereSeveralPairsShareARealPart) {
  const Complex a(0, 3);
  const Complex b(0, 2);
  t_complex64list roots{{-1, 0}, a, b, std::conj(b), std::conj(a), {1, 1}, {1, -1}};
  filtermath::join_conjugates(roots);
  EXPECT_EQ(roots, (t_complex64list{{-1, 0}, a, std::conj(a), b, std::conj(b), {1, 1}, {1, -1}}));
}

TEST(JoinedConjugates, LeaveARealRootBetweenThemLast) {
  const Complex a(0, 3);
  t_complex64list roots{a, 0.0, std::conj(a)};
  filtermath::join_conjugates(roots);
  EXPECT_EQ(roots, (t_complex64list{a, std::conj(a), 0.0}));
}

// A NaN in either part leaves a root without an order.
TEST(SortedRoots, EndWithThoseThatHaveNoOrder) {
  t_complex64list roots{{2, NAN}, {1, -1}, {NAN, 5}, {1, 1}, {0, NAN}, {-3, 0}};
  filtermath::sort_roots(roots);
  EXPECT_EQ((t_complex64list{roots.begin(), roots.begin() + 3}),
            (t_complex64list{{-3, 0}, {1, 1}, {1, -1}}));
  EXPECT_EQ(roots[3].real(), 2.0);
  EXPECT_TRUE(std::isnan(roots[4].real()));
  EXPECT_EQ(roots[5].real(), 0.0);
}

TEST(SortedPairs, KeepTheOrderOfEqualKeysHoweverManyThereAre) {
  for (int count = 0; count < 50; ++count) {
    std::vector<t_complex64pair> pairs;
    for (int i = 0; i < count; ++i)
      pairs.push_back(
          {Complex(i, 0), Complex(), i % 7 == 6 ? NAN : static_cast<double>(i * 5 % 4)});
    filtermath::sort_pairs(pairs);
    for (int i = 1; i < count; ++i) {
      const t_complex64pair &before = pairs[static_cast<std::size_t>(i) - 1];
      const t_complex64pair &pair = pairs[static_cast<std::size_t>(i)];
      if (before.key == pair.key || std::isnan(before.key)) {
        EXPECT_LT(before.first.real(), pair.first.real()) << count;
      }
      EXPECT_FALSE(pair.key < before.key) << count;
      EXPECT_TRUE(std::isnan(pair.key) || !std::isnan(before.key)) << count;
    }
  }
}

TEST(JoinedConjugates, EndWithNaNs) {
  t_complex64list roots{{1, 1}, {1, -1}, {NAN, NAN}, {NAN, NAN}};
  filtermath::join_conjugates(roots);
  EXPECT_EQ(roots.size(), 4U);
  EXPECT_EQ(roots[1], Complex(1, -1));
}

}  // namespace
