// What rounding to floats does.
#include "analysis/rounding.h"

#include <gtest/gtest.h>

#include "data.h"

namespace {

using namespace analysis;

TEST(FloatRounding, MovesPolesAsFarAsTheRootsOfTheFloatsSay) {
  for (const data::Case &one : data::cases()) {
    const double expected = one.number("float_movement");
    EXPECT_NEAR(float_rounding_effect(one.sections, 120).pole_movement, expected,
                1e-9 * expected + 1e-16)
        << one.name;
  }
}

TEST(FloatRounding, HurtsNarrowFiltersAndSparesBroadOnes) {
  const RoundingEffect broad =
      float_rounding_effect(data::named("butterworth bandstop of order 3").sections, 120);
  EXPECT_TRUE(broad.stability.stable);
  EXPECT_FALSE(broad.silent);
  EXPECT_LT(broad.response.db, 0.01);
  EXPECT_LT(broad.worst_ratio, 1e-5);
  const RoundingEffect narrow =
      float_rounding_effect(data::named("chebyshev-2 lowpass of order 200").sections, 120);
  EXPECT_GT(narrow.worst_ratio, 1.0);
  EXPECT_GT(narrow.response.db, 10.0);
}

TEST(FloatRounding, ALostGainIsSilence) {
  const RoundingEffect lost =
      float_rounding_effect(data::named("butterworth lowpass of order 190").sections, 120);
  EXPECT_TRUE(lost.silent);
  EXPECT_NEAR(lost.response.db, 120.0, 1e-3);
}

TEST(FloatRounding, WhatAreFloatsAlreadyDoesNotChange) {
  const Sections floats{{0.5, 0.25, 0.125, -0.5, 0.75}};
  const RoundingEffect none = float_rounding_effect(floats, 120);
  EXPECT_EQ(none.pole_movement, 0.0);
  EXPECT_EQ(none.response.db, 0.0);
  EXPECT_EQ(rounded_to_float({{0.1, 0, 0, 0, 0}})[0].b0, static_cast<double>(0.1F));
  EXPECT_THROW(rounding_effect(floats, {}, 120), std::invalid_argument);
}

TEST(FloatRounding, FollowsPolesThatTradeTheirRank) {
  // poles near 0.5 and -0.5, of which first one and then the other is the larger
  const RoundingEffect small =
      rounding_effect({{1, 0, 0, 1e-9, -0.25}}, {{1, 0, 0, -1e-9, -0.25}}, 120);
  EXPECT_NEAR(small.pole_movement, 1e-9, 1e-15);
}

TEST(FloatRounding, CanMakeAFilterUnstable) {
  const RoundingEffect change = float_rounding_effect({{1, 0, 0, 0, 1 - 1e-9}}, 120);
  EXPECT_FALSE(change.stability.stable);
  EXPECT_GE(change.worst_ratio, 1.0);
}

}  // namespace
