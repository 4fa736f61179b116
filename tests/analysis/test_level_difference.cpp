// How far the forms of a filter are apart.
#include "analysis/level_difference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "analysis/response.h"
#include "analysis/rounding.h"
#include "analysis/stability.h"
#include "data.h"

namespace {

using namespace analysis;

TEST(LevelDifference, OfSectionsWithTheirRootsIsClose) {
  for (const data::Case &one : data::cases())
    EXPECT_LT(level_difference(one.roots, one.sections, 120).db, one.order > 8 ? 5e-3 : 5e-5)
        << one.name;
}

TEST(LevelDifference, SeesATransferFunctionBreakDown) {
  const data::Case &good = data::named("butterworth lowpass of order 4");
  EXPECT_LT(level_difference(good.roots, good.transfer, 100).db, 1e-8);
  EXPECT_LT(level_difference(good.sections, good.transfer, 100).db, 1e-8);
  const data::Case &narrow = data::named("chebyshev-2 bandpass of order 4");
  EXPECT_GT(level_difference(narrow.roots, narrow.transfer, 120).db, 10);
}

TEST(LevelDifference, IsTheDifferenceAtThePlaceItNames) {
  const data::Case &one = data::named("chebyshev-1 lowpass of order 8");
  Sections other = one.sections;
  other[1].a1 *= 1.0001;
  const LevelDifference found = level_difference(one.sections, other, 120);
  EXPECT_GT(found.db, 0.01);
  EXPECT_NEAR(found.db, std::fabs(level_db(one.sections, found.w) - level_db(other, found.w)),
              1e-12);
  for (int i = 0; i <= 2000; ++i) {
    const double w = 0.11 * i / 2000;  // where no level is below the floor
    const double here = std::fabs(level_db(one.sections, w) - level_db(other, w));
    EXPECT_LT(here, found.db * 1.05) << w;
  }
}

// The zeros of a stopband move along the circle when they are rounded, and the difference is a
// spike at each.
TEST(LevelDifference, IsTheLargestAlsoBesideZerosThatMoved) {
  constexpr double floor_db = 120;
  for (const data::Case &one : data::cases()) {
    const Sections other = rounded_to_float(one.sections);
    if (one.order > 20 || !stability(other).stable) continue;
    const LevelDifference found = level_difference(one.sections, other, floor_db);
    double peak = -std::numeric_limits<double>::infinity();
    std::vector<double> at;
    for (int i = 0; i <= 3000; ++i) at.push_back(i / 3000.0);
    for (const Sections &sections : {one.sections, other}) {
      const Roots roots = roots_of(sections);
      for (const auto &list : {roots.zeros, roots.poles})
        for (const Complex &root : list)
          for (const double beside : {0.0, 1e-9, -1e-9, 1e-7, -1e-7, 1e-5, -1e-5})
            at.push_back(
                std::clamp(std::fabs(std::arg(root)) / std::numbers::pi + beside, 0.0, 1.0));
    }
    for (const double w : at) peak = std::max(peak, level_db(one.sections, w));
    for (const double w : at) {
      const double here = std::fabs(std::max(level_db(one.sections, w), peak - floor_db) -
                                    std::max(level_db(other, w), peak - floor_db));
      // beside a zero, 120 dB down, a level itself is off by some 1e-5 dB
      ASSERT_LE(here, found.db * 1.01 + 1e-4) << one.name << " at " << w;
    }
  }
}

TEST(LevelDifference, LevelsBelowTheFloorCountAsTheFloor) {
  // 1 + z^-1 has no level at w = 1, the other has -80 dB: that counts only above the floor
  const Sections zero{{1, 1, 0, 0, 0}}, other{{1, 0.9998, 0, 0, 0}};
  // where the first meets the floor of -53.98 dB, 0.002, the other has sqrt(0.002^2 + 0.0002^2)
  EXPECT_NEAR(level_difference(zero, other, 60).db, 10 * std::log10(1.01), 1e-3);
  // peak 6.02 dB, floor -113.98 dB, against 20 log10 0.0002 = -73.98 dB
  EXPECT_NEAR(level_difference(zero, other, 120).db, 40.0, 0.01);
  EXPECT_NEAR(level_difference(zero, Sections{{1e-3, 1e-3, 0, 0, 0}}, 120).db, 60.0, 1e-9);
}

TEST(LevelDifference, WithNaNIsInfinite) {
  const double nan = std::nan("");
  EXPECT_TRUE(std::isinf(level_difference(Roots{}, Sections{{nan, 0, 0, 0, 0}}, 120).db));
  EXPECT_TRUE(std::isinf(level_difference(Roots{}, Transfer{{1}, {nan}}, 120).db));
}

}  // namespace
