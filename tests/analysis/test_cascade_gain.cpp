// Scaling a cascade.
#include "analysis/cascade_gain.h"

#include <gtest/gtest.h>

#include "analysis/band.h"
#include "analysis/cascade_peaks.h"
#include "analysis/impulse_norms.h"
#include "analysis/response.h"
#include "data.h"

namespace {

using namespace analysis;

// Beyond order 8 the gain of some filters is not a normal double, which powers of two cannot keep.
bool has_digits(const data::Case &one) { return one.order <= 8; }

TEST(GainFactor, SetsTheLevel) {
  for (const data::Case &one : data::cases()) {
    if (!has_digits(one)) continue;
    const double w = reference_frequency(one.band, one.cutoffs);
    const auto factor = gain_factor(one.sections, w, -20.0);
    ASSERT_TRUE(factor.has_value()) << one.name;
    // The narrow band lies close to zeros at 1, where the numerator's last digits count.
    const double tolerance = one.cutoffs[0] < 0.01 ? 1e-9 : 1e-11;
    EXPECT_NEAR(level_db(scaled(one.sections, *factor), w), -20.0, tolerance) << one.name;
  }
}

TEST(GainFactor, RepairsALevelThatIsWrong) {
  // (1 + z^-1)^2 / 4 has the level 0 dB at DC.
  const Sections filter{{3 * 0.25, 3 * 0.5, 3 * 0.25, 0.0, 0.0}};
  EXPECT_NEAR(gain_factor(filter, 0.0, 0.0).value(), 1.0 / 3.0, 1e-15);
}

TEST(GainFactor, IsNoneWhereThereIsNoLevelToScale) {
  EXPECT_EQ(gain_factor({{1, 2, 1, 0, 0}}, 1.0, 0.0), std::nullopt) << "silent there";
  EXPECT_EQ(gain_factor({{1, 0, 0, -1, 0}}, 0.0, 0.0), std::nullopt) << "infinite there";
  EXPECT_EQ(gain_factor({{NAN, 0, 0, 0, 0}}, 0.5, 0.0), std::nullopt);
  EXPECT_EQ(gain_factor({{1, 0, 0, 0, 0}}, 0.5, 7000.0), std::nullopt) << "no double";
  EXPECT_EQ(gain_factor({{1, 0, 0, 0, 0}}, 0.5, -6160.0), std::nullopt) << "not a normal one";
}

TEST(GainSpread, LeavesPeaksAroundZeroDecibelsAndTheWholeFilterToTheBit) {
  std::size_t checked = 0;
  for (const data::Case &one : data::cases()) {
    if (!has_digits(one)) continue;
    const Sections spread = with_gain_spread(one.sections);
    const std::vector<Peak> peaks = running_peaks(spread);
    for (std::size_t i = 0; i + 1 < peaks.size(); ++i, ++checked)
      EXPECT_LE(std::fabs(peaks[i].db), 10 * std::log10(2.0) + 1e-9) << one.name << ", " << i;
    for (const double w : one.at)
      EXPECT_EQ(response(spread, w), response(one.sections, w)) << one.name << " at " << w;
  }
  EXPECT_GE(checked, 15U);
}

TEST(GainSpread, KeepsAWholeThatIsNotAtFullLevel) {
  // Peaks of 4096 and 4096 * 8 at DC.
  const Sections spread = with_gain_spread({{1024, 2048, 1024, 0, 0}, {2, 4, 2, 0, 0}});
  EXPECT_EQ(spread[0].b1, 0.5) << "a peak of 1";
  EXPECT_EQ(spread[1].b1, 4.0 * 4096.0);
  EXPECT_EQ(spread[1].b0 + spread[1].b2, spread[1].b1);
}

TEST(GainSpread, StaysAsGivenFromASectionWithoutAFinitePeakOn) {
  const Sections spread = with_gain_spread({{8, 0, 0, 0, 0}, {4, 0, 0, -1, 0}, {2, 0, 0, 0, 0}});
  EXPECT_EQ(spread[0].b0, 1.0);
  EXPECT_EQ(spread[1].b0, 32.0) << "what the first gave away, and no more";
  EXPECT_EQ(spread[2].b0, 2.0);
  EXPECT_EQ(with_gain_spread({{0, 0, 0, 0, 0}, {3, 0, 0, 0, 0}})[1].b0, 3.0);
  EXPECT_TRUE(with_gain_spread({}).empty());
}

TEST(GainWithinFullScale, NoInputLeavesFullScaleBetweenTheSections) {
  std::size_t checked = 0;
  for (const data::Case &one : data::cases()) {
    const auto scaled = with_gain_within_full_scale(one.sections);
    if (!scaled) continue;
    ++checked;
    const std::vector<Norms> norms = norms_from_input(*scaled);
    for (std::size_t i = 0; i + 1 < norms.size(); ++i) {
      EXPECT_LT(norms[i].l1, 1.0) << one.name << i;
      EXPECT_GE(norms[i].l1, 0.4999) << one.name << i;
    }
    for (const double w : {0.1, 0.3, 0.77})
      EXPECT_EQ(response(*scaled, w), response(one.sections, w)) << one.name << " at " << w;
  }
  EXPECT_GE(checked, 10U);
}

TEST(GainWithinFullScale, GivesUpWhereNoSumEndsOrDigitsAreLost) {
  EXPECT_FALSE(with_gain_within_full_scale({{1, 0, 0, -1, 0}, {1, 0, 0, 0, 0}}));
  EXPECT_FALSE(with_gain_within_full_scale({{1e-200, 0, 0, 0, 0}, {1e-150, 0, 0, 0, 0}}));
  EXPECT_TRUE(with_gain_within_full_scale({{1e-200, 0, 0, 0, 0}, {1e-100, 0, 0, 0, 0}}));
  EXPECT_EQ(with_gain_within_full_scale({})->size(), 0U);
}

TEST(ReferenceLevel, IsTheBottomOfTheRippleForAChebyshevOfEvenOrder) {
  EXPECT_EQ(reference_level(Family::chebyshev_1, 4, 0.5), -0.5);
  EXPECT_EQ(reference_level(Family::chebyshev_1, 5, 0.5), 0.0);
  EXPECT_EQ(reference_level(Family::chebyshev_2, 4, 0.5), 0.0);
  EXPECT_EQ(reference_level(Family::butterworth, 4, 0.5), 0.0);
}

}  // namespace
