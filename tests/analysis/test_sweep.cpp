#include "analysis/sweep.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "analysis/phase.h"
#include "analysis/response.h"
#include "data.h"

namespace {

using namespace analysis;

constexpr double pi = std::numbers::pi;

// The references of the data, and even steps, in order.
std::vector<double> places(const data::Case &one) {
  std::vector<double> w = one.at;
  for (int i = 0; i <= 500; ++i) w.push_back(i / 500.0);
  for (const double cutoff : one.cutoffs)
    for (int i = -50; i <= 50; ++i) w.push_back(cutoff * (1 + i / 1000.0));
  std::erase_if(w, [](double one_w) { return one_w > 1; });
  std::sort(w.begin(), w.end());
  return w;
}

double highest(const std::vector<double> &levels) {
  return *std::max_element(levels.begin(), levels.end());
}

// What is far below the peak is that of zeros, whose rounding is seen there.
void expect_same_levels(const std::vector<double> &found, const std::vector<double> &expected,
                        const std::string &name) {
  const double lowest = highest(expected) - 200;
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (expected[i] > lowest)
      EXPECT_NEAR(found[i], expected[i], 1e-7) << name << ", place " << i;
    else
      EXPECT_LT(found[i], lowest + 1e-7) << name << ", place " << i;
  }
}

template <class Filter>
std::vector<double> single_levels(const Filter &filter, const std::vector<double> &w) {
  std::vector<double> levels;
  for (const double one : w) levels.push_back(level_db(filter, one));
  return levels;
}

TEST(Sweep, LevelsAreThoseOfEachFrequency) {
  for (const data::Case &one : data::cases()) {
    const auto w = places(one);
    expect_same_levels(swept_levels(one.sections, w), single_levels(one.sections, w), one.name);
    expect_same_levels(swept_levels(one.roots, w), single_levels(one.roots, w), one.name);
  }
}

// In the narrowest bands poles lie 1e-8 from the circle.
TEST(Sweep, LevelsAreTheReferences) {
  for (const data::Case &one : data::cases()) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < one.at.size(); ++i) order.push_back(i);
    std::sort(order.begin(), order.end(),
              [&](std::size_t x, std::size_t y) { return one.at[x] < one.at[y]; });
    const auto column = one.column("sections_level");
    std::vector<double> w, expected;
    for (const std::size_t i : order) {
      if (std::isnan(column[i])) continue;
      w.push_back(one.at[i]);
      expected.push_back(column[i]);
    }
    expect_same_levels(swept_levels(one.sections, w), expected, one.name);
  }
}

TEST(Sweep, PhasesAreThoseOfEachFrequencyWithAllTheirTurns) {
  for (const data::Case &one : data::cases()) {
    const auto w = places(one);
    const auto found = swept_phases(one.roots, w);
    ASSERT_EQ(found.size(), w.size());
    for (std::size_t i = 0; i < w.size(); ++i)
      EXPECT_NEAR(found[i], unwrapped_phase(one.roots, w[i]), 1e-6) << one.name << " at " << w[i];
  }
}

TEST(Sweep, PhasesOfRootsAnywhereAreThoseOfEachFrequency) {
  const Complex outside(1.1, 0.7), inside(-0.6, 0.5), on(std::polar(1.0, 0.9));
  const Roots filter{{outside, std::conj(outside), 3.0, -1.5, 0.2, 1.0, -1.0, on, std::conj(on)},
                     {inside, std::conj(inside), 0.9, -0.8, std::conj(1.0 / inside), 1.0 / inside},
                     -2.0};
  std::vector<double> w;
  for (int i = 0; i <= 300; ++i) w.push_back(i / 300.0);
  const auto found = swept_phases(filter, w);
  for (std::size_t i = 0; i < w.size(); ++i)
    EXPECT_NEAR(found[i], unwrapped_phase(filter, w[i]), 1e-9) << "at " << w[i];
  EXPECT_NEAR(swept_phases(filter, {0.3}).front(), unwrapped_phase(filter, 0.3), 1e-9);
  EXPECT_TRUE(swept_phases(filter, {}).empty());
}

TEST(Sweep, DelaysAreThoseOfEachFrequency) {
  for (const data::Case &one : data::cases()) {
    const auto w = places(one);
    const auto found = swept_delays(one.roots, w);
    const double longest = 1 / one.number("margin");
    ASSERT_EQ(found.size(), w.size());
    for (std::size_t i = 0; i < w.size(); ++i)
      EXPECT_NEAR(found[i], group_delay(one.roots, w[i]), 1e-7 * longest)
          << one.name << " at " << w[i];
  }
}

TEST(Sweep, LevelsBeyondTheRangeOfDoublesAreFound) {
  Sections loud(100, Section{1e300, 0, 0, 0, 0});
  EXPECT_NEAR(swept_levels(loud, {0.3}).front(), 100 * 6000.0, 1e-6);
  EXPECT_NEAR(swept_levels(Sections(100, Section{1e-300, 0, 0, 0, 0}), {0.3}).front(), -600000.0,
              1e-6);
  const Roots far{{Complex(1e140)}, {Complex(-1e140)}, 1.0};
  EXPECT_NEAR(swept_levels(far, {0.7}).front(), 0.0, 1e-9);
  EXPECT_NEAR(swept_delays(far, {0.7}).front(), group_delay(far, 0.7), 1e-9);
}

TEST(Sweep, SilenceAndWhatIsNotFiniteStaySo) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double silent = -std::numeric_limits<double>::infinity();
  EXPECT_EQ(swept_levels(Sections{{0, 0, 0, 0.5, 0}}, {0.3}).front(), silent);
  EXPECT_EQ(swept_levels(Roots{{1.0}, {0.5}, 1.0}, {0.0}).front(), silent);
  EXPECT_EQ(swept_levels(Roots{{-1.0}, {0.5}, 1.0}, {1.0}).front(), silent);
  EXPECT_TRUE(std::isnan(swept_levels(Sections{{1, 0, 0, nan, 0}}, {0.3}).front()));
  EXPECT_TRUE(std::isnan(swept_levels(Roots{{}, {Complex(nan, 0)}, 1.0}, {0.3}).front()));
}

}  // namespace
