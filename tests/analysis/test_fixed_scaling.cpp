// Cascades in fixed point that cannot overflow.
#include "analysis/fixed_scaling.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>

#include "analysis/impulse.h"
#include "analysis/level_difference.h"
#include "analysis/run.h"
#include "analysis/stability.h"
#include "fixed_filters.h"

namespace {

using namespace analysis;

constexpr Arithmetic widths[] = {Arithmetic::fixed_32, Arithmetic::fixed_16};

// Runs full scale with the signs that add up at the output of section k, the last sample last.
std::vector<double> worst_input(const Sections &sections, std::size_t k, std::size_t count) {
  const Sections until(sections.begin(), sections.begin() + static_cast<std::ptrdiff_t>(k) + 1);
  std::vector<double> response = impulse_response(until, count);
  std::reverse(response.begin(), response.end());
  for (double &sample : response) sample = sample < 0 ? -1 : 1;
  return response;
}

FixedCascade until(FixedCascade cascade, std::size_t k) {
  cascade.sections.resize(k + 1);
  return cascade;
}

std::size_t overflows_at_worst(const FixedCascade &cascade) {
  const Sections sections = sections_of(cascade);
  std::size_t overflows = 0;
  for (std::size_t k = 0; k < sections.size(); ++k)
    for (const double sign : {1.0, -1.0}) {
      std::vector<double> input = worst_input(sections, k, 3000);
      for (double &sample : input) sample *= sign;
      overflows += run_fixed(cascade, input).overflows;
    }
  return overflows;
}

TEST(FixedScaling, NoSectionOverflowsAtTheWorstInputForAny) {
  for (const auto &[name, filter] : fixed_filters::all())
    for (const Arithmetic arithmetic : widths) {
      const auto scaled = scaled_for_fixed(filter, arithmetic);
      ASSERT_TRUE(scaled) << name;
      EXPECT_EQ(overflows_at_worst(scaled->cascade), 0U) << name << scaled->cascade.bits;
    }
}

// Inputs that would find an overflow do, and gains are not small for nothing.
TEST(FixedScaling, TheWorstInputGetsAsFarAsIsSaid) {
  for (const auto &[name, filter] : fixed_filters::all())
    for (const Arithmetic arithmetic : widths) {
      const ScaledCascade scaled = scaled_for_fixed(filter, arithmetic).value();
      const Sections sections = sections_of(scaled.cascade);
      ASSERT_EQ(scaled.reach.size(), sections.size());
      for (std::size_t k = 0; k < sections.size(); ++k) {
        EXPECT_LT(scaled.reach[k], 1) << name;
        const double found =
            run_fixed(until(scaled.cascade, k), worst_input(sections, k, 3000)).output.back();
        EXPECT_LE(found, scaled.reach[k]) << name << k;
        EXPECT_GE(found, scaled.reach[k] - 2 * scaled.error - 0.01) << name << k;
      }
    }
}

TEST(FixedScaling, ASlightlyHigherGainOverflows) {
  std::size_t tried = 0;
  for (const auto &[name, filter] : fixed_filters::all()) {
    const ScaledCascade scaled = scaled_for_fixed(filter, Arithmetic::fixed_32).value();
    Sections louder = sections_of(scaled.cascade);
    if (louder.size() < 2 || scaled.reach[0] < 0.99) continue;
    ++tried;
    for (double *value : {&louder[0].b0, &louder[0].b1, &louder[0].b2}) *value *= 1.02;
    EXPECT_GT(overflows_at_worst(fixed_cascade(louder, Arithmetic::fixed_32)), 0U) << name;
  }
  EXPECT_GE(tried, 3U);
}

TEST(FixedScaling, TheWholeIsTheFilterTimesAPowerOfTwo) {
  for (const auto &[name, filter] : fixed_filters::all())
    for (const Arithmetic arithmetic : widths) {
      // What is 60 dB down has few digits in 16 bits.
      if (arithmetic == Arithmetic::fixed_16 && std::string(name) == "small gain") continue;
      const ScaledCascade scaled = scaled_for_fixed(filter, arithmetic).value();
      Sections found = sections_of(scaled.cascade);
      const double undone = std::ldexp(1.0, scaled.shift);
      for (double *value : {&found[0].b0, &found[0].b1, &found[0].b2}) *value *= undone;
      EXPECT_LT(level_difference(filter, found, 20).db,
                arithmetic == Arithmetic::fixed_32 ? 1e-4 : 0.5)
          << name;
      const double half = 0.5 * (1 - scaled.error);
      if (scaled.shift > 0) {
        EXPECT_GT(scaled.reach.back(), half * 0.98) << name << ": no smaller";
      }
    }
}

TEST(FixedScaling, RoundingsAddUpToNoMoreThanIsSaid) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> uniform(-1, 1);
  for (const auto &[name, filter] : fixed_filters::all())
    for (const Arithmetic arithmetic : widths) {
      const ScaledCascade scaled = scaled_for_fixed(filter, arithmetic).value();
      const double units = std::ldexp(1.0, scaled.cascade.bits - 1);
      std::vector<double> input(20000);
      for (double &sample : input) sample = std::floor(uniform(random) * units) / units;
      const auto wanted = run_direct_1(sections_of(scaled.cascade),
                                       std::vector<long double>(input.begin(), input.end()));
      const auto found = run_fixed(scaled.cascade, input).output;
      double largest = 0;
      for (std::size_t i = 0; i < input.size(); ++i)
        largest = std::max(largest, static_cast<double>(std::fabs(found[i] - wanted[i])));
      EXPECT_LE(largest, scaled.error) << name;
      EXPECT_GT(largest, 0.02 * scaled.error) << name;
    }
}

TEST(FixedScaling, IntegersComeBackFromTheirValues) {
  for (const auto &[name, filter] : fixed_filters::all())
    for (const Arithmetic arithmetic : widths) {
      const FixedCascade cascade = scaled_for_fixed(filter, arithmetic).value().cascade;
      const FixedCascade again = fixed_cascade(sections_of(cascade), arithmetic);
      EXPECT_EQ(again.postshift, cascade.postshift) << name;
      for (std::size_t k = 0; k < cascade.sections.size(); ++k) {
        EXPECT_EQ(again.sections[k].b0, cascade.sections[k].b0) << name;
        EXPECT_EQ(again.sections[k].b1, cascade.sections[k].b1) << name;
        EXPECT_EQ(again.sections[k].minus_a1, cascade.sections[k].minus_a1) << name;
      }
    }
}

TEST(FixedScaling, KeepsTheProportionsOfASmallNumerator) {
  Sections lowpass{fixed_filters::resonance(0.02, 0.95, 1, 2, 1),
                   fixed_filters::resonance(0.03, 0.96, 1, 2, 1)};
  for (Section &s : lowpass)
    for (double *value : {&s.b0, &s.b1, &s.b2}) *value *= (1 + s.a1 + s.a2) / 4;
  const FixedCascade cascade = scaled_for_fixed(lowpass, Arithmetic::fixed_16).value().cascade;
  EXPECT_EQ(cascade.sections[0].b1, 2 * cascade.sections[0].b0);
  EXPECT_EQ(cascade.sections[0].b2, cascade.sections[0].b0);
}

TEST(FixedScaling, GivesUpWhereItCannotRun) {
  const Sections near_the_circle{fixed_filters::resonance(0.3, 1 - 1e-6, 1e-6, 0, 0)};
  EXPECT_FALSE(scaled_for_fixed(near_the_circle, Arithmetic::fixed_16));
  EXPECT_FALSE(stability(with_fixed_feedback(near_the_circle, Arithmetic::fixed_16)).stable);
  EXPECT_TRUE(scaled_for_fixed(near_the_circle, Arithmetic::fixed_32));
  EXPECT_TRUE(stability(with_fixed_feedback(near_the_circle, Arithmetic::fixed_32)).stable);
  const Sections all_rounding{fixed_filters::resonance(0.003, 0.9999, 1e-4, 2, 1)};
  EXPECT_FALSE(scaled_for_fixed(all_rounding, Arithmetic::fixed_16));
  EXPECT_THROW(scaled_for_fixed(all_rounding, Arithmetic::doubles), std::invalid_argument);
}

}  // namespace
