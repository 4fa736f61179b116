// Ripple and attenuation of designed filters: what the textbook promises.
#include "analysis/extremes.h"

#include <gtest/gtest.h>

#include "analysis/crossing.h"
#include "analysis/response.h"
#include "data.h"
#include "design_tolerance.h"

namespace {

using namespace analysis;

TEST(Ripple, OfAChebyshevFilterIsTouchedAndNotExceeded) {
  for (const data::Case &one : data::cases()) {
    const Extremes found = extremes(one.roots, passband(one.band, one.cutoffs));
    EXPECT_NEAR(found.highest.db - one.lift, 0.0, design_tolerance(one)) << one.name;
    if (one.family == "chebyshev-2") continue;
    const double lost = one.family == "butterworth" ? half_power_db : one.ripple;
    // the edge itself is where the level falls most steeply
    EXPECT_NEAR(found.lowest.db - one.lift, -lost, 1e-5) << one.name;
    EXPECT_NEAR(ripple_reached(one.roots, passband(one.band, one.cutoffs)), lost, 1e-5) << one.name;
  }
}

TEST(Attenuation, OfAnInverseChebyshevFilterIsTouchedAndNotExceeded) {
  for (const data::Case &one : data::cases()) {
    if (one.family != "chebyshev-2") continue;
    // a little inside the stopband: at the edge itself the level is steep
    std::vector<Interval> ranges = stopband(one.band, one.cutoffs);
    EXPECT_NEAR(attenuation_reached(one.roots, ranges, 0.0), one.attenuation, 1e-5) << one.name;
    for (Interval &range : ranges) {
      const double inwards = 1e-5 * (range.high - range.low) / one.order;
      range = {range.low + (range.low > 0 ? inwards : 0),
               range.high - (range.high < 1 ? inwards : 0)};
    }
    EXPECT_NEAR(attenuation_reached(one.roots, ranges, 0.0), one.attenuation, design_tolerance(one))
        << one.name;
  }
}

TEST(Extremes, AreNotExceededAnywhereOnADenseGrid) {
  for (const data::Case &one : data::cases()) {
    if (one.order > 8) continue;
    const Interval range{0.3 * one.cutoffs.front(), 0.5 * (1 + one.cutoffs.back())};
    const Extremes found = extremes(one.sections, {range});
    for (int i = 0; i <= 20000; ++i) {
      const double w = range.low + (range.high - range.low) * i / 20000;
      EXPECT_LE(level_db(one.sections, w), found.highest.db + 1e-10) << one.name << " at " << w;
      EXPECT_GE(level_db(one.sections, w), found.lowest.db - 1e-10) << one.name << " at " << w;
    }
    EXPECT_EQ(level_db(one.sections, found.highest.w), found.highest.db);
  }
}

TEST(Extremes, FindASharpResonanceInABroadOne) {
  // poles 1e-9 inside the circle and a broad pair beside them
  Sections filter{{1, 0, 0, -2 * (1 - 1e-9) * std::cos(1.0), (1 - 1e-9) * (1 - 1e-9)},
                  {1, 0, 0, -1.2 * std::cos(1.1), 0.36}};
  const Peak peak = extremes(filter, {{0.0, 1.0}}).highest;
  EXPECT_NEAR(peak.w, 1.0 / std::numbers::pi, 1e-9);
  // 1 / |1 - r e^0| |1 - r e^(-2j)| and the broad pair's gain there
  const double alone = -20 * std::log10(1e-9 * 2 * std::sin(1.0));
  EXPECT_NEAR(peak.db, alone + level_db(Sections{filter[1]}, peak.w), 1e-4);
}

TEST(Extremes, RefuseRangesThatDoNotAscend) {
  EXPECT_THROW(extremes(Roots{}, {}), std::invalid_argument);
  EXPECT_THROW(extremes(Roots{}, {{0.5, 0.4}}), std::invalid_argument);
}

}  // namespace
