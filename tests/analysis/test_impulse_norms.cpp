// Norms of impulse responses within a cascade.
#include "analysis/impulse_norms.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

#include "analysis/impulse.h"

namespace {

using namespace analysis;

TEST(ImpulseNorms, AreThoseOfAGeometricSeries) {
  const std::vector<Norms> norms = norms_from_input({{1, 0, 0, -0.5, 0}, {0.25, 0, 0, 0, 0}});
  ASSERT_EQ(norms.size(), 2U);
  EXPECT_NEAR(norms[0].l1, 2, 1e-7);
  EXPECT_NEAR(norms[0].l2, std::sqrt(4.0 / 3), 1e-12);
  EXPECT_NEAR(norms[1].l1, 0.5, 1e-7);
  EXPECT_NEAR(norms_from_input({{1, 0, 0, 0.5, 0}})[0].l1, 2, 1e-7) << "signs do not matter";
}

// Poles of two time constants, and zeros that delay what comes out.
TEST(ImpulseNorms, AreTheSumsOfTheResponse) {
  Sections filter;
  for (const double radius : {0.999, 0.9, 0.999})
    filter.push_back({0.1, -0.2, 0.3, -2 * radius * std::cos(0.05), radius * radius});
  filter.push_back({0, 0, 1, 0, 0});
  const std::vector<Norms> norms = norms_from_input(filter);
  ASSERT_EQ(norms.size(), filter.size());
  for (std::size_t k = 0; k < filter.size(); ++k) {
    const Sections until(filter.begin(), filter.begin() + static_cast<std::ptrdiff_t>(k) + 1);
    double magnitudes = 0, squares = 0;
    for (const double y : impulse_response(until, 60000)) {
      magnitudes += std::fabs(y);
      squares += y * y;
    }
    EXPECT_GE(norms[k].l1, magnitudes * (1 - 1e-12)) << k;
    EXPECT_LE(norms[k].l1, magnitudes * (1 + 1e-7)) << k;
    EXPECT_NEAR(norms[k].l2 / std::sqrt(squares), 1, 1e-10) << k;
  }
}

TEST(ImpulseNorms, OfARoundingDoWithoutTheZerosOfItsSection) {
  const Sections filter{{5, 5, 5, -0.5, 0}, {7, 0, 0, -0.5, 0}, {0.5, 0, 0, 0, 0}};
  const std::vector<Norms> first = norms_from_rounding(filter, 0),
                           second = norms_from_rounding(filter, 1);
  ASSERT_EQ(first.size(), 3U);
  ASSERT_EQ(second.size(), 2U);
  EXPECT_NEAR(first[0].l1, 2, 1e-7);
  EXPECT_NEAR(first[1].l1, 28, 1e-6) << "4 through both feedbacks, times 7";
  EXPECT_NEAR(first[2].l1, 14, 1e-6);
  EXPECT_NEAR(second[0].l1, 2, 1e-7);
  EXPECT_NEAR(second[1].l1, 1, 1e-7);
}

TEST(ImpulseNorms, AreInfiniteWhereTheResponseDoesNotEnd) {
  for (const Section &section :
       {Section{1, 0, 0, -1, 0}, Section{1, 0, 0, 0, 1.1}, Section{1, 0, 0, -1 + 1e-9, 0},
        Section{1, 0, 0, std::numeric_limits<double>::quiet_NaN(), 0}}) {
    EXPECT_EQ(norms_from_input({section})[0].l1, INFINITY) << section.a1;
    EXPECT_EQ(norms_from_input({section})[0].l2, INFINITY) << section.a1;
  }
  EXPECT_TRUE(norms_from_input({}).empty());
}

// What has died away long before the slowest section has leaves remainders that do not fall.
TEST(ImpulseNorms, EndWithASectionThatRingsShortly) {
  const double radius = 0.9, w = 0.3 * std::numbers::pi;
  const std::vector<Norms> norms = norms_from_input(
      {{1, 0, 0, -2 * radius * std::cos(w), radius * radius}, {1, 0, 0, -0.99999, 0}});
  EXPECT_TRUE(std::isfinite(norms[0].l1));
  EXPECT_TRUE(std::isfinite(norms[1].l1));
}

}  // namespace
