// What a cascade in fixed point does when it runs.
#include "analysis/fixed_measures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "analysis/fixed_scaling.h"
#include "analysis/noise.h"
#include "fixed_filters.h"

namespace {

using namespace analysis;

constexpr Arithmetic widths[] = {Arithmetic::fixed_32, Arithmetic::fixed_16};

// y = floor(a y') stays where it is from -k to 0 if a k > k - 1.
TEST(FixedMeasures, FindTheDeadBandOfOnePole) {
  for (const double a : {0.9, 0.99, 0.999}) {
    const Section pole{(1 - a) / 2, 0, 0, -a, 0};
    const double held = std::nearbyint(std::ldexp(a, 15)) / 32768;
    EXPECT_EQ(fixed_measures(fixed_cascade({pole}, Arithmetic::fixed_16)).value().limit_cycle,
              std::ceil(1 / (1 - held)) - 1)
        << a;
  }
}

// Each sum loses half a unit in the mean.
TEST(FixedMeasures, FindTheOffset) {
  const FixedMeasures one =
      fixed_measures(fixed_cascade({{0.1234, 0, 0, 0, 0}}, Arithmetic::fixed_16)).value();
  EXPECT_NEAR(one.offset, -0.5, 0.01);
  EXPECT_EQ(one.limit_cycle, 0);
  const FixedMeasures pole =
      fixed_measures(fixed_cascade({{0.1234, 0, 0, -0.75, 0}}, Arithmetic::fixed_32)).value();
  EXPECT_NEAR(pole.offset, -2, 0.1);
}

TEST(FixedMeasures, FindTheNoiseThatIsPredicted) {
  for (const auto &[name, filter] : fixed_filters::all())
    for (const Arithmetic arithmetic : widths) {
      const ScaledCascade scaled = scaled_for_fixed(filter, arithmetic).value();
      const Noise quiet = noise(sections_of(scaled.cascade), Structure::direct_1, arithmetic, 0.25);
      ASSERT_FALSE(quiet.overflows) << name;
      EXPECT_NEAR(fixed_measures(scaled.cascade).value().noise_db,
                  quiet.white_db - 20 * std::log10(4.0), 3)
          << name;
    }
}

TEST(FixedMeasures, FindNoLimitCycleBeyondTheBound) {
  double closest = 0;
  for (const auto &[name, filter] : fixed_filters::all())
    for (const Arithmetic arithmetic : widths) {
      const ScaledCascade scaled = scaled_for_fixed(filter, arithmetic).value();
      const double units = std::ldexp(1.0, scaled.cascade.bits - 1);
      const double found = fixed_measures(scaled.cascade).value().limit_cycle;
      EXPECT_LE(found, scaled.error * units) << name;
      closest = std::max(closest, found / (scaled.error * units));
    }
  EXPECT_GT(closest, 0.3);
}

TEST(FixedMeasures, AreNoneWhereNothingRunsOrEnds) {
  EXPECT_FALSE(fixed_measures(fixed_cascade({{1, 0, 0, -1, 0}}, Arithmetic::fixed_32)));
  EXPECT_FALSE(fixed_measures(fixed_cascade({{1, 0, 0, -1 + 1e-8, 0}}, Arithmetic::fixed_32)));
  EXPECT_FALSE(fixed_measures(fixed_cascade({{0, 0, 0, -0.5, 0}}, Arithmetic::fixed_32)));
}

}  // namespace
