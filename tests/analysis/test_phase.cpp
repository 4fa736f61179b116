#include "analysis/phase.h"

#include <gtest/gtest.h>

#include "analysis/grid.h"
#include "analysis/stability.h"
#include "data.h"
#include "wide_tolerance.h"

namespace {

using namespace analysis;

constexpr double pi = std::numbers::pi;

// Where the level is lower, the angle hangs on the last digits of zeros that are all at one place.
constexpr double lowest_db = -4000;

double whole_turns_off(double x) { return std::fabs(std::remainder(x, 2 * pi)); }

TEST(Phase, WrappedPhasesAreExact) {
  for (const data::Case &one : data::cases()) {
    const auto levels = one.column("roots_level"), of_roots = one.column("roots_phase"),
               of_sections = one.column("sections_phase");
    for (std::size_t i = 0; i < one.at.size(); ++i) {
      if (!(levels[i] > lowest_db)) continue;
      EXPECT_LT(whole_turns_off(wrapped_phase(one.roots, one.at[i]) - of_roots[i]), 1e-10)
          << one.name << " at " << one.at[i];
      if (std::isnan(of_sections[i])) continue;
      EXPECT_LT(whole_turns_off(wrapped_phase(one.sections, one.at[i]) - of_sections[i]), 1e-10)
          << one.name << " at " << one.at[i];
    }
  }
}

TEST(Phase, UnwrappedPhasesHaveEveryTurn) {
  for (const data::Case &one : data::cases()) {
    const auto expected = one.column("unwrapped");
    for (std::size_t i = 0; i < one.at.size(); ++i) {
      if (std::isnan(expected[i])) continue;
      EXPECT_NEAR(unwrapped_phase(one.roots, one.at[i]), expected[i], 1e-9)
          << one.name << " at " << one.at[i];
    }
  }
}

TEST(Phase, UnwrappedPhaseFallsByHalfATurnAPoleThroughAnAllPoleFilter) {
  // A lowpass with all zeros at -1 turns by a quarter for each pole up to the Nyquist frequency.
  const data::Case &one = data::named("butterworth lowpass of order 190");
  EXPECT_EQ(unwrapped_phase(one.roots, 0.0), 0.0);
  EXPECT_NEAR(unwrapped_phase(one.roots, 1.0), -190 * pi / 2, 1e-9);
}

TEST(Phase, IsContinuousButForARiseOfPiAtZerosOnTheCircle) {
  for (const data::Case &one : data::cases()) {
    if (one.order > 8) continue;
    std::size_t rises = 0;
    double last = unwrapped_phase(one.roots, 0.0), w_last = 0.0;
    for (const double w : grid(one.roots, {0.0, 1.0})) {
      const double phase = unwrapped_phase(one.roots, w);
      // what the delay at both ends accounts for, doubled
      const double way = pi * (w - w_last);
      const double most = 0.8 + 2 * way *
                                    (std::fabs(group_delay(one.roots, w)) +
                                     std::fabs(group_delay(one.roots, w_last)));
      const double step = phase - last;
      if (std::fabs(step) > most) {
        EXPECT_GT(step, 0.0) << one.name << " at " << w;
        EXPECT_LT(std::fabs(std::remainder(step, pi)), most) << one.name << " at " << w;
        ++rises;
      }
      last = phase;
      w_last = w;
    }
    std::size_t zeros_between = 0;
    for (const Complex &zero : one.roots.zeros)
      if (zero.imag() > 1e-6 && std::fabs(distance_inside(zero)) < on_circle) ++zeros_between;
    // Zeros that all lie at one place make one step of several half turns.
    if (one.family == "chebyshev-2") {
      EXPECT_EQ(rises, zeros_between) << one.name;
    }
  }
}

TEST(Phase, ZerosOutsideTheCircleTurnTheOtherWay) {
  // minimum phase, the mirrored maximum phase, and both signs of the gain
  const Complex inside = std::polar(0.5, 1.0), outside = std::polar(2.0, 1.0);
  const std::vector<Complex> poles(2);
  EXPECT_NEAR(unwrapped_phase(Roots{{inside, std::conj(inside)}, poles, 1.0}, 1.0), 0.0, 1e-12);
  EXPECT_NEAR(unwrapped_phase(Roots{{outside, std::conj(outside)}, poles, 1.0}, 1.0), -2 * pi,
              1e-12);
  EXPECT_NEAR(unwrapped_phase(Roots{{Complex(2)}, {Complex()}, 1.0}, 0.0), pi, 1e-12);
  EXPECT_NEAR(unwrapped_phase(Roots{{Complex(2)}, {Complex()}, -1.0}, 0.0), 0.0, 1e-12);
  EXPECT_NEAR(unwrapped_phase(Roots{{}, {}, -1.0}, 0.7), pi, 1e-12);
  // a pure delay of three samples
  EXPECT_NEAR(unwrapped_phase(Roots{{}, std::vector<Complex>(3), 1.0}, 0.9), -2.7 * pi, 1e-12);
}

TEST(Phase, SectionsOfANegativeGainBeginAtHalfATurn) {
  const Section positive{1, 0, 0, -0.5, 0}, negative{-1, 0, 0, -0.5, 0};
  EXPECT_NEAR(unwrapped_phase(Sections{negative, positive}, 0.0), pi, 1e-12);
  EXPECT_NEAR(unwrapped_phase(Sections{negative, negative}, 0.0), 0.0, 1e-12);
  // whose product underflows to 0
  const Section small{-1e-300, 0, 0, -0.5, 0};
  EXPECT_NEAR(unwrapped_phase(Sections{small, small}, 0.0), 0.0, 1e-12);
  EXPECT_NEAR(unwrapped_phase(Sections{small, small, small}, 0.0), pi, 1e-12);
}

TEST(Phase, ZerosAtOneBeginWithinHalfATurn) {
  for (int count = 1; count < 12; ++count) {
    const std::size_t n = static_cast<std::size_t>(count);
    const Roots filter{std::vector<Complex>(n, 1.0), std::vector<Complex>(n), 1.0};
    const double phase = unwrapped_phase(filter, 0.0);
    EXPECT_GT(phase, -pi + 1e-9);
    EXPECT_LE(phase, pi + 1e-9);
    EXPECT_LT(whole_turns_off(phase - count * pi / 2), 1e-9);
  }
}

TEST(Phase, SectionsHaveThePhaseOfTheirRoots) {
  for (const data::Case &one : data::cases()) {
    if (one.order > 8) continue;
    for (std::size_t i = 0; i < one.at.size(); ++i)
      EXPECT_NEAR(unwrapped_phase(one.sections, one.at[i]), unwrapped_phase(one.roots, one.at[i]),
                  1e-6)
          << one.name << " at " << one.at[i];
  }
}

TEST(GroupDelay, IsExactFromRootsAndFromSections) {
  for (const data::Case &one : data::cases()) {
    const auto of_roots = one.column("roots_delay"), of_sections = one.column("sections_delay");
    const auto levels = one.column("roots_level");
    const double longest = 1 / one.number("margin");
    const double relative = wide_tolerance(1e-12, 1e-11);
    for (std::size_t i = 0; i < one.at.size(); ++i) {
      if (!(levels[i] > lowest_db)) continue;
      EXPECT_NEAR(group_delay(one.roots, one.at[i]), of_roots[i],
                  relative * (longest + std::fabs(of_roots[i])) + 1e-9)
          << one.name << " at " << one.at[i];
      if (std::isnan(of_sections[i])) continue;
      EXPECT_NEAR(group_delay(one.sections, one.at[i]), of_sections[i],
                  relative * (longest + std::fabs(of_sections[i])) + 1e-9)
          << one.name << " at " << one.at[i];
    }
  }
}

TEST(GroupDelay, OfAPureDelayIsThatDelay) {
  EXPECT_DOUBLE_EQ(group_delay(Sections{{0, 1, 0, 0, 0}}, 0.3), 1.0);
  EXPECT_DOUBLE_EQ(group_delay(Sections{{0, 0, 1, 0, 0}}, 0.3), 2.0);
  EXPECT_DOUBLE_EQ(group_delay(Sections{{1, 0, 0, 0, 0}}, 0.3), 0.0);
  EXPECT_DOUBLE_EQ(group_delay(Roots{{}, std::vector<Complex>(4), 1.0}, 0.3), 4.0);
}

TEST(GroupDelay, IsHalfASampleForAZeroOnTheCircle) {
  EXPECT_DOUBLE_EQ(group_delay(Sections{{1, 1, 0, 0, 0}}, 0.4), 0.5);
  EXPECT_DOUBLE_EQ(group_delay(Sections{{1, 1, 0, 0, 0}}, 1.0), 0.5);
  EXPECT_DOUBLE_EQ(group_delay(Sections{{1, -2 * std::cos(pi * 0.4), 1, 0, 0}}, 0.4), 1.0);
}

TEST(GroupDelay, AddsUpToThePhaseOfAllPassedPoles) {
  // The mean delay over the axis is what the phase has turned by: n/2 samples for n zeros at -1.
  const data::Case &one = data::named("chebyshev-1 lowpass of order 8");
  double sum = 0.0;
  const int points = 200000;
  for (int i = 0; i < points; ++i) sum += group_delay(one.roots, (i + 0.5) / points);
  EXPECT_NEAR(sum / points, 4.0, 1e-6);
}

}  // namespace
