// Stability by reflection coefficients.
#include "analysis/schur_cohn.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "analysis/expansion.h"
#include "data.h"

namespace {

using namespace analysis;

TEST(SchurCohn, StableMeansAllRootsInside) {
  EXPECT_TRUE(schur_cohn_stable({1.0, -1.8, 0.99}));
  EXPECT_FALSE(schur_cohn_stable({1.0, -1.8, 1.01}));
  EXPECT_FALSE(schur_cohn_stable({1.0, -2.0, 1.0})) << "on the circle";
  EXPECT_FALSE(schur_cohn_stable({1.0, -1.0})) << "one on the circle";
  // Roots 0.5, 0.5 and 1.1: the last coefficient alone says nothing.
  EXPECT_FALSE(schur_cohn_stable({1.0, -2.1, 1.35, -0.275}));
  EXPECT_TRUE(schur_cohn_stable({3.0}));
}

TEST(SchurCohn, IsThatOfTheRoots) {
  std::size_t checked = 0;
  for (const data::Case &one : data::cases()) {
    // Of the narrow filter's polynomial no digit of the poles' distance from the circle is left.
    if (one.transfer.denominator.empty() || one.cutoffs[0] < 0.01) continue;
    std::vector<double> denominator = one.transfer.denominator;
    EXPECT_TRUE(schur_cohn_stable(denominator)) << one.name;
    std::reverse(denominator.begin(), denominator.end());  // every root becomes its inverse
    EXPECT_FALSE(schur_cohn_stable(denominator)) << one.name;
    ++checked;
  }
  EXPECT_GE(checked, 8U);
}

TEST(SchurCohn, TellsPolesThatAlmostTouchTheCircle) {
  const auto denominator = [](double a2) {
    return expanded({{1, 0, 0, -0.3, a2}, {1, 0, 0, -0.9, 0.25}, {1, 0, 0, 0.5, 0}}).denominator;
  };
  EXPECT_TRUE(schur_cohn_stable(denominator(1 - 1e-9)));
  EXPECT_FALSE(schur_cohn_stable(denominator(1 + 1e-9)));
}

TEST(SchurCohn, TheScaleDoesNotMatter) {
  EXPECT_TRUE(schur_cohn_stable({-1e-100, 1.8e-100, -0.99e-100}));
  EXPECT_FALSE(schur_cohn_stable({-1e100, 1.8e100, -1.01e100}));
}

TEST(SchurCohn, IsFalseWhereACoefficientIsNotFinite) {
  EXPECT_FALSE(schur_cohn_stable({1.0, NAN, 0.5}));
  EXPECT_FALSE(schur_cohn_stable({1.0, INFINITY, 0.5}));
  EXPECT_FALSE(schur_cohn_stable({1.0, 0.5, NAN}));
}

}  // namespace
