// Sections in fixed point.
#include "analysis/fixed_point.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>

#include "analysis/impulse.h"

namespace {

using namespace analysis;

constexpr double unit_16 = 0x1p-15, unit_32 = 0x1p-31;

TEST(FixedPoint, CoefficientsShareTheSmallestPostshiftThatHoldsThem) {
  const FixedCascade small = fixed_cascade({{0.5, 0.25, -0.125, 0.9, -0.5}}, Arithmetic::fixed_16);
  EXPECT_EQ(small.postshift, 0);
  EXPECT_EQ(small.sections[0].b0, 1 << 14);
  EXPECT_EQ(small.sections[0].minus_a2, 1 << 14);
  EXPECT_EQ(small.sections[0].minus_a1, -29491);  // 0.9 * 32768 = 29491.2
  const Sections two{{0.5, 0, 0, 0, 0}, {1, 0, 0, -1.9, 0.95}};
  EXPECT_EQ(fixed_cascade(two, Arithmetic::fixed_32).postshift, 1);
  EXPECT_EQ(fixed_cascade(two, Arithmetic::fixed_32).sections[0].b0, 1 << 29);
  EXPECT_EQ(fixed_cascade({{1, 0, 0, 0, 0}}, Arithmetic::fixed_16).sections[0].b0, 32767);
  EXPECT_EQ(fixed_cascade({{-1, 0, 0, 0, 0}}, Arithmetic::fixed_16).sections[0].b0, -32768);
}

TEST(FixedPoint, SectionsOfTheIntegersAreTheGivenOnesWithinHalfAUnit) {
  const Section given{0.1, 0.2, 0.1, -1.7, 0.72};
  const Section found = sections_of(fixed_cascade({given}, Arithmetic::fixed_16))[0];
  EXPECT_NEAR(found.b0, given.b0, unit_16);
  EXPECT_NEAR(found.a1, given.a1, unit_16);
  EXPECT_NEAR(found.a2, given.a2, unit_16);
  EXPECT_NE(found.a2, given.a2);
}

TEST(FixedPoint, ComputesWhatTheSectionsDo) {
  const Sections filter{{0.1, 0.2, 0.1, -1.2, 0.52}, {0.5, -0.25, 0, 0.3, 0}};
  std::vector<double> input(300, 0.0);
  for (std::size_t i = 0; i < input.size(); ++i)
    input[i] = 0.4 * std::sin(0.1 * static_cast<double>(i * i % 97));
  for (const auto &[arithmetic, unit] :
       {std::pair{Arithmetic::fixed_16, unit_16}, {Arithmetic::fixed_32, unit_32}}) {
    const FixedCascade cascade = fixed_cascade(filter, arithmetic);
    const std::vector<double> expected = filtered(sections_of(cascade), input);
    const FixedRun run = run_fixed(cascade, input);
    ASSERT_EQ(run.output.size(), input.size());
    EXPECT_EQ(run.overflows, 0U);
    for (std::size_t i = 0; i < input.size(); ++i)
      EXPECT_NEAR(run.output[i], expected[i], 10 * unit) << i;
  }
}

TEST(FixedPoint, RoundsTowardsMinusInfinity) {
  const FixedCascade half = fixed_cascade({{0.5, 0, 0, 0, 0}}, Arithmetic::fixed_16);
  EXPECT_EQ(run_fixed(half, {unit_16, -unit_16, 3 * unit_16}).output,
            (std::vector<double>{0, -unit_16, unit_16}));
}

TEST(FixedPoint, OverflowTurnsOverIn32BitsAndStopsAtTheEndIn16) {
  const Sections twice{{2, 0, 0, 0, 0}};
  const FixedRun turned = run_fixed(fixed_cascade(twice, Arithmetic::fixed_32), {0.75, 0.25});
  EXPECT_NEAR(turned.output[0], -0.5, 1e-8);
  EXPECT_NEAR(turned.output[1], 0.5, 1e-8);
  EXPECT_EQ(turned.overflows, 1U);
  const FixedRun limited = run_fixed(fixed_cascade(twice, Arithmetic::fixed_16), {0.75, -0.75});
  EXPECT_EQ(limited.output, (std::vector<double>{1 - unit_16, -1}));
  EXPECT_EQ(limited.overflows, 2U);
}

TEST(FixedPoint, SeesAnOverflowOfTheAccumulatorItself) {
  constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
  const analysis::FixedCascade cascade{32, 31, {{lowest, lowest, lowest, lowest, lowest}}};
  // The last sum is 2^64 - 2^31, whose low 64 bits are those of a number in range.
  EXPECT_EQ(analysis::run_fixed(cascade, {std::ldexp(1.0, -31), -1.0, -1.0}).overflows, 2U);
}

TEST(FixedPoint, LimitsItsInput) {
  const FixedCascade through = fixed_cascade({{-1, 0, 0, 0, 0}}, Arithmetic::fixed_16);
  EXPECT_EQ(run_fixed(through, {3.0}).output[0], -(1 - unit_16));
}

TEST(FixedPoint, RefusesWhatItCannotHold) {
  EXPECT_THROW(fixed_cascade({{1, 0, 0, 0, 0}}, Arithmetic::doubles), std::invalid_argument);
  EXPECT_THROW(fixed_cascade({{NAN, 0, 0, 0, 0}}, Arithmetic::fixed_32), std::invalid_argument);
  EXPECT_THROW(fixed_cascade({{0x1.8p31, 0, 0, 0, 0}}, Arithmetic::fixed_32),
               std::invalid_argument);
  EXPECT_THROW(fixed_cascade({{0x1.8p15, 0, 0, 0, 0}}, Arithmetic::fixed_16),
               std::invalid_argument);
  EXPECT_EQ(fixed_cascade({{16384, 0, 0, 0, 0}}, Arithmetic::fixed_16).postshift, 14);
  EXPECT_EQ(fixed_cascade({}, Arithmetic::fixed_16).sections.size(), 0U);
}

}  // namespace
