#include "analysis/stability.h"

#include <gtest/gtest.h>

#include "analysis/impulse.h"
#include "data.h"

namespace {

using namespace analysis;

TEST(Stability, MarginsKeepTheirDigits) {
  for (const data::Case &one : data::cases()) {
    const double margin = one.number("margin"), of_sections = one.number("section_margin");
    EXPECT_NEAR(stability(one.roots).margin, margin, 1e-14 * margin) << one.name;
    EXPECT_NEAR(stability(one.sections).margin, of_sections, 1e-14 * of_sections) << one.name;
    EXPECT_DOUBLE_EQ(stability(one.roots).radius, 1 - margin);
    EXPECT_TRUE(stability(one.roots).stable && stability(one.sections).stable);
  }
}

TEST(Stability, TheLastDoubleBeforeTheCircleIsInsideAndTheNextIsNot) {
  for (const auto &[radius, stable] :
       {std::pair{1 - 0x1p-53, true}, {1.0, false}, {1 + 0x1p-52, false}}) {
    EXPECT_EQ(stability(Roots{{}, {Complex(radius)}, 1.0}).stable, stable);
    EXPECT_EQ(stability(Roots{{}, {Complex(0, -radius)}, 1.0}).stable, stable);
    EXPECT_EQ(stability(Sections{{1, 0, 0, radius, 0}}).stable, stable);
    EXPECT_EQ(stability(Sections{{1, 0, 0, 0, radius}}).stable, stable);
    EXPECT_EQ(stability(Sections{{1, 0, 0, -radius, 0}}).stable, stable);
  }
  // 0.6 and 0.8 are rounded so that the sum of their squares exceeds 1 by some 1e-17
  EXPECT_FALSE(stability(Roots{{}, {Complex(0.6, 0.8), Complex(0.6, -0.8)}, 1.0}).stable);
}

TEST(Stability, RealPolesNearOneKeepTheirDistance) {
  // (z - x)(z - y) with 1 - x = 2^-26, 1 - y = 2^-27 held exactly by a1 and a2
  const Sections close{{1, 0, 0, -(2 - 0x1.8p-26), (1 - 0x1p-26) * (1 - 0x1p-27)}};
  EXPECT_DOUBLE_EQ(stability(close).margin, 0x1p-27);
  EXPECT_DOUBLE_EQ(stability(Sections{{1, 0, 0, -2.5, 1}}).margin, -1.0);
  EXPECT_DOUBLE_EQ(stability(Sections{{1, 0, 0, 5, 6}}).margin, -2.0);
}

TEST(Stability, NoPolesAreStableAndNaNIsNot) {
  EXPECT_EQ(stability(Roots{}).radius, 0.0);
  EXPECT_TRUE(stability(Sections{}).stable);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(stability(Roots{{}, {Complex(0.5), Complex(nan, 0), Complex(0.2)}, 1.0}).stable);
  EXPECT_FALSE(stability(Sections{{1, 0, 0, nan, 0}, {1, 0, 0, 0, 0}}).stable);
}

TEST(Ringing, IsTheTimeOfSixtyDecibels) {
  const Stability one = stability(Sections{{1, 0, 0, -0.99, 0}});
  const double samples = ringing_samples(one);
  EXPECT_NEAR(std::pow(0.99, samples), 1e-3, 1e-15);
  EXPECT_NEAR(ringing_milliseconds(one, 48000), samples / 48, 1e-9);
  const std::vector<double> sound = impulse_response({{1, 0, 0, -0.99, 0}}, 700);
  EXPECT_GT(sound[static_cast<std::size_t>(samples)], 1e-3);
  EXPECT_LT(sound[static_cast<std::size_t>(samples) + 1], 1e-3);
}

TEST(Ringing, IsLongNearTheCircleAndEndlessOnIt) {
  EXPECT_NEAR(ringing_samples({1 - 1e-12, 1e-12, true}), std::log(1000.0) * 1e12, 10);
  EXPECT_EQ(ringing_samples({0.0, 1.0, true}), 0.0);
  EXPECT_TRUE(std::isinf(ringing_samples({1.0, 0.0, false})));
}

}  // namespace
