// Agreement of the forms, peaks within the cascade, rounding to floats, and the pairing of poles.
#include <gmock/gmock.h>

#include "analysis/cascade_peaks.h"
#include "analysis/level_difference.h"
#include "analysis/pairing.h"
#include "analysis/response.h"
#include "analysis/rounding.h"
#include "data.h"

namespace {

using namespace analysis;

TEST(LevelDifference, OfSectionsWithTheirRootsIsClose) {
  for (const data::Case &one : data::cases())
    EXPECT_LT(level_difference(one.roots, one.sections, 120).db, one.order > 8 ? 1e-4 : 1e-7)
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

TEST(LevelDifference, LevelsBelowTheFloorCountAsTheFloor) {
  // 1 + z^-1 has no level at w = 1, the other has -80 dB: that counts only above the floor
  const Sections zero{{1, 1, 0, 0, 0}}, other{{1, 0.9998, 0, 0, 0}};
  EXPECT_LT(level_difference(zero, other, 60).db, 0.01);
  // peak 6.02 dB, floor -113.98 dB, against 20 log10 0.0002 = -73.98 dB
  EXPECT_NEAR(level_difference(zero, other, 120).db, 40.0, 0.01);
  EXPECT_NEAR(level_difference(zero, Sections{{1e-3, 1e-3, 0, 0, 0}}, 120).db, 60.0, 1e-9);
}

TEST(LevelDifference, WithWhatIsNoNumberIsNone) {
  const double nan = std::nan("");
  EXPECT_TRUE(std::isinf(level_difference(Roots{}, Sections{{nan, 0, 0, 0, 0}}, 120).db));
  EXPECT_TRUE(std::isinf(level_difference(Roots{}, Transfer{{1}, {nan}}, 120).db));
}

TEST(CascadePeaks, OfSectionsAreThoseOfTheClosedFormula) {
  for (const data::Case &one : data::cases()) {
    const std::vector<double> expected = one.column("section_peaks");
    const std::vector<Peak> found = section_peaks(one.sections);
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
      EXPECT_NEAR(found[i].db, expected[i], 1e-9) << one.name << ", section " << i;
  }
}

TEST(CascadePeaks, OfTheRunningProductAreThoseOfADenseSearch) {
  std::size_t checked = 0;
  for (const data::Case &one : data::cases()) {
    if (!one.record.contains("running_peaks") || one.cutoffs[0] < 0.01) continue;
    const std::vector<double> expected = one.column("running_peaks");
    const std::vector<Peak> found = running_peaks(one.sections);
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i)
      EXPECT_NEAR(found[i].db, expected[i], 1e-6) << one.name << ", " << i + 1 << " sections";
    ++checked;
  }
  EXPECT_GE(checked, 7U);
}

TEST(CascadePeaks, OfTheWholeProductAreThePassband) {
  for (const data::Case &one : data::cases()) {
    const std::vector<Peak> found = running_peaks(one.sections);
    EXPECT_NEAR(found.back().db - one.lift, 0.0, one.order > 8 ? 1e-4 : 1e-8) << one.name;
    for (std::size_t i = 0; i < found.size(); i += 17) {
      const Sections first(one.sections.begin(),
                           one.sections.begin() + static_cast<std::ptrdiff_t>(i + 1));
      EXPECT_NEAR(level_db(first, found[i].w), found[i].db, 1e-8) << one.name;
    }
  }
}

TEST(FloatRounding, MovesPolesAsFarAsTheRootsOfTheFloatsSay) {
  for (const data::Case &one : data::cases()) {
    const double expected = one.number("float_movement");
    EXPECT_NEAR(float_rounding_effect(one.sections, 120).pole_movement, expected,
                1e-9 * expected + 1e-16)
        << one.name;
  }
}

TEST(FloatRounding, HurtsNarrowFiltersAndNoBroadOnes) {
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

TEST(PairingOfPoles, OfEverySectionIsFound) {
  for (const data::Case &one : data::cases()) {
    const Pairing found = pairing(one.roots.poles, one.sections);
    EXPECT_TRUE(found.intact) << one.name;
    EXPECT_TRUE(found.strangers.empty() && found.missing.empty());
  }
}

TEST(PairingOfPoles, NoticesAMovedAMissingAndAMixedPair) {
  const data::Case &one = data::named("chebyshev-1 lowpass of order 8");
  Sections moved = one.sections;
  moved[2].a1 *= 1 + 1e-12;
  const Pairing found = pairing(one.roots.poles, moved);
  EXPECT_FALSE(found.intact);
  EXPECT_THAT(found.strangers, testing::ElementsAre(2U));
  EXPECT_EQ(found.missing.size(), 1U);

  Sections fewer = one.sections;
  fewer.pop_back();
  EXPECT_TRUE(pairing(one.roots.poles, fewer).strangers.empty());
  EXPECT_EQ(pairing(one.roots.poles, fewer).missing.size(), 1U);

  Sections twice = one.sections;
  twice[0] = twice[1];
  EXPECT_EQ(pairing(one.roots.poles, twice).strangers.size(), 1U);

  // one pole of each of two pairs, taken for a section: the denominators swap a1
  Sections mixed = one.sections;
  std::swap(mixed[0].a1, mixed[1].a1);
  EXPECT_THAT(pairing(one.roots.poles, mixed).strangers, testing::ElementsAre(0U, 1U));
}

TEST(PairingOfPoles, TakesRealPolesInAnyCombination) {
  const std::vector<Complex> poles{0.5, 0.25, -0.5, 0.125, 0.75};
  // 0.5 with -0.5, 0.25 with 0.125, and 0.75 alone
  const Sections filter{{1, 0, 0, 0, -0.25}, {1, 0, 0, -0.375, 0.03125}, {1, 0, 0, -0.75, 0}};
  EXPECT_TRUE(pairing(poles, filter).intact);
  EXPECT_FALSE(pairing({0.5, 0.25, -0.5, 0.125, 0.7}, filter).intact);
}

TEST(PairingOfPoles, GivesWayWhereTwoSectionsFitOnePair) {
  // The first section fits both pairs, the second only the first pair.
  const Complex p(0.5, 0.5), q(0.5 + 1e-9, 0.5);
  const auto section = [](const Complex &r) {
    return Section{1, 0, 0, -2 * r.real(), std::norm(r)};
  };
  const Sections filter{section(p + Complex(0.5e-9, 0)), section(p - Complex(0.5e-9, 0))};
  EXPECT_TRUE(pairing({p, std::conj(p), q, std::conj(q)}, filter, 1.2e-9).intact);
}

}  // namespace
