// Where levels are crossed.
#include "analysis/crossing.h"

#include <gtest/gtest.h>

#include "analysis/response.h"
#include "data.h"

namespace {

using namespace analysis;

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

// A lowpass of z^2 passes around 0 and, mirrored, around 1: a bandstop whose ripples are crossed.
TEST(HalfPower, OfABandstopAreThoseNextToTheCentre) {
  const data::Case &low = data::named("chebyshev-1 lowpass of order 8");
  Roots stop{{}, {}, low.roots.gain};
  for (const Complex &zero : low.roots.zeros)
    stop.zeros.insert(stop.zeros.end(), {std::sqrt(zero), -std::sqrt(zero)});
  for (const Complex &pole : low.roots.poles)
    stop.poles.insert(stop.poles.end(), {std::sqrt(pole), -std::sqrt(pole)});
  const std::vector<double> ripples = crossings(low.roots, -0.25, {0.0, 1.0});
  ASSERT_EQ(ripples.size(), 8U);
  const std::vector<double> found =
      half_power_points(stop, Band::bandstop, {0.1, 0.9}, half_power_db - 0.25);
  ASSERT_EQ(found.size(), 2U);
  EXPECT_NEAR(found[0], ripples.back() / 2, 1e-12);
  EXPECT_NEAR(found[1], 1 - ripples.back() / 2, 1e-12);
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

}  // namespace
