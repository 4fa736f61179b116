// Levels, ripple, attenuation and -3 dB points of designed filters: what the textbook promises.
#include <gtest/gtest.h>

#include "analysis/band.h"
#include "analysis/crossing.h"
#include "analysis/extremes.h"
#include "analysis/grid.h"
#include "analysis/response.h"
#include "data.h"

namespace {

using namespace analysis;

// Roots of order 200 are rounded at a distance of some 1e-7 from the circle.
double design_tolerance(const data::Case &one) { return one.order > 8 ? 2e-7 : 2e-9; }

TEST(Band, PrewarpingGoesBothWays) {
  for (const double w : {1e-12, 0.0008, 0.5, 0.75, 1 - 1e-9})
    EXPECT_DOUBLE_EQ(unwarped(prewarped(w)), w);
  EXPECT_DOUBLE_EQ(prewarped(0.5), 1.0);
  EXPECT_DOUBLE_EQ(band_centre(0.25, 0.75), 0.5);
}

TEST(Band, PassesAndStopsOnOppositeSides) {
  EXPECT_EQ(passband(Band::lowpass, {0.2}).front().high, 0.2);
  EXPECT_EQ(passband(Band::highpass, {0.2}).front().high, 1.0);
  EXPECT_EQ(passband(Band::bandpass, {0.2, 0.3}).front().low, 0.2);
  ASSERT_EQ(passband(Band::bandstop, {0.2, 0.3}).size(), 2U);
  EXPECT_EQ(passband(Band::bandstop, {0.2, 0.3}).back().low, 0.3);
  EXPECT_EQ(stopband(Band::lowpass, {0.2}).front().low, 0.2);
  EXPECT_EQ(stopband(Band::bandstop, {0.2, 0.3}).front().high, 0.3);
  ASSERT_EQ(stopband(Band::bandpass, {0.2, 0.3}).size(), 2U);
}

TEST(Band, RefusesEdgesThatAreNone) {
  EXPECT_THROW(passband(Band::lowpass, {}), std::invalid_argument);
  EXPECT_THROW(passband(Band::lowpass, {0.1, 0.2}), std::invalid_argument);
  EXPECT_THROW(passband(Band::lowpass, {0.0}), std::invalid_argument);
  EXPECT_THROW(stopband(Band::highpass, {1.0}), std::invalid_argument);
  EXPECT_THROW(passband(Band::bandpass, {0.3, 0.2}), std::invalid_argument);
  EXPECT_THROW(stopband(Band::bandpass, {0.3, 0.3}), std::invalid_argument);
  EXPECT_THROW(passband(Band::lowpass, {std::nan("")}), std::invalid_argument);
  EXPECT_THROW(extremes(Roots{}, {}), std::invalid_argument);
  EXPECT_THROW(extremes(Roots{}, {{0.5, 0.4}}), std::invalid_argument);
}

TEST(Levels, CutoffsAreWhereTheFamilySaysTheyAre) {
  for (const data::Case &one : data::cases()) {
    const double expected = one.family == "butterworth"   ? -half_power_db
                            : one.family == "chebyshev-1" ? -one.ripple
                                                          : -one.attenuation;
    for (const double level : levels(one.roots, one.band, one.cutoffs).cutoffs)
      EXPECT_NEAR(level - one.lift, expected, 1e-5) << one.name;
  }
}

TEST(Levels, ReferenceIsWhereThePrototypeBegins) {
  for (const data::Case &one : data::cases()) {
    const Levels found = levels(one.roots, one.band, one.cutoffs);
    const bool foot = one.family == "chebyshev-1" && one.order % 2 == 0;
    EXPECT_NEAR(found.reference - one.lift, foot ? -one.ripple : 0.0, design_tolerance(one))
        << one.name;
    if (one.band == Band::bandstop) {
      EXPECT_NEAR(found.nyquist, found.dc, 1e-9) << one.name;
    }
    if (one.band == Band::bandpass) {
      EXPECT_EQ(found.centre, found.reference);
    }
    EXPECT_EQ(std::isnan(found.centre), one.cutoffs.size() == 1);
  }
}

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

TEST(HalfPower, PointsAreThoseOfTheSquareLaw) {
  for (const data::Case &one : data::cases()) {
    const std::vector<double> expected = one.column("half_power");
    const std::vector<double> found = half_power_points(one.roots, one.band, one.cutoffs, one.lift);
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
      EXPECT_NEAR(found[i], expected[i], 1e-9 * expected[i]) << one.name;
  }
}

TEST(HalfPower, PointsOfSectionsAreThoseOfTheirRoots) {
  for (const data::Case &one : data::cases()) {
    if (one.order > 8) continue;
    const auto found = half_power_points(one.sections, one.band, one.cutoffs, 0.0);
    const auto expected = one.column("half_power");
    for (std::size_t i = 0; i < found.size(); ++i)
      EXPECT_NEAR(found[i], expected[i], 1e-9 * expected[i]) << one.name;
  }
}

TEST(HalfPower, OfAFilterThatHasNoneIsNotANumber) {
  EXPECT_TRUE(
      std::isnan(half_power_points(Sections{{1, 0, 0, 0, 0}}, Band::lowpass, {0.3}, 0.0)[0]));
}

TEST(Crossing, EveryRippleIsCounted) {
  // order 8, ripple 0.5 dB: halfway down it is crossed once for each pole on the upper half
  const data::Case &one = data::named("chebyshev-1 lowpass of order 8");
  EXPECT_EQ(crossings(one.roots, -0.25, {0.0, one.cutoffs[0]}).size(), 8U);
  EXPECT_EQ(crossings(one.roots, -0.25, {0.0, 1.0}).size(), 8U);
  EXPECT_EQ(crossings(one.roots, -0.501, {0.0, 1.0}).size(), 1U);
  EXPECT_EQ(crossings(one.roots, 0.001, {0.0, 1.0}).size(), 0U);
  // just below the ripple's top each maximum is crossed twice, closer than the grid
  EXPECT_EQ(crossings(one.roots, -1e-7, {0.0, 1.0}).size(), 8U);
  for (const double w : crossings(one.roots, -0.25, {0.0, 1.0}))
    EXPECT_NEAR(level_db(one.roots, w), -0.25, 1e-11);
}

TEST(Crossing, EveryRippleOfOrder200IsCounted) {
  const data::Case &one = data::named("chebyshev-1 bandpass of order 200");
  EXPECT_EQ(crossings(one.roots, one.lift - 0.25, {0.0, 1.0}).size(), 400U);
  const data::Case &stop = data::named("chebyshev-2 bandstop of order 200");
  EXPECT_EQ(crossings(stop.roots, -70, {0.0, 1.0}).size(), 400U);
}

TEST(Grid, HoldsTheEndsAndAscends) {
  for (const data::Case &one : data::cases()) {
    const std::vector<double> points = grid(one.roots, {0.05, 0.95});
    EXPECT_EQ(points.front(), 0.05);
    EXPECT_EQ(points.back(), 0.95);
    for (std::size_t i = 1; i < points.size(); ++i) EXPECT_LT(points[i - 1], points[i]);
    EXPECT_LT(points.size(), 40 * (one.roots.poles.size() + one.roots.zeros.size() + 4))
        << one.name;
  }
}

TEST(Grid, StepsGrowWithTheDistanceFromASharpRootBeyondItsNeighbour) {
  // a pole 1e-6 from the circle, and blunt ones close by on both sides of it
  const double sharp = 0.3, distance = 1e-6;
  const auto pole = [](double radius, double w) {
    return std::polar(radius, std::numbers::pi * w);
  };
  const Roots filter{
      {}, {pole(1 - distance, sharp), pole(0.5, sharp + 1e-7), pole(0.5, sharp - 1e-7)}, 1.0};
  const std::vector<double> points = grid(filter, {0.0, 1.0});
  for (std::size_t i = 1; i < points.size(); ++i) {
    const double nearer = std::min(std::fabs(points[i] - sharp), std::fabs(points[i - 1] - sharp));
    EXPECT_LE(points[i] - points[i - 1], distance + 1.5 * nearer) << points[i];
  }
}

}  // namespace
