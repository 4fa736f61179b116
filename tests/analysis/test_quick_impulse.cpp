#include "analysis/quick_impulse.h"

#include <gmock/gmock.h>

#include "analysis/arrangement.h"
#include "analysis/impulse.h"
#include "data.h"

namespace {

using namespace analysis;

Sections slow_sections(std::size_t count) {
  Sections filter;
  for (std::size_t i = 0; i < count; ++i) {
    const auto place = static_cast<double>(i);
    filter.push_back({0.5, 0.1 * place, -0.3, -1.9 + 0.01 * place, 0.95 - 0.01 * place});
  }
  return filter;
}

TEST(QuickImpulse, IsTheImpulseResponseToTheBit) {
  for (const std::size_t sections : {0U, 1U, 2U, 3U, 4U, 5U, 9U})
    for (const std::size_t count : {0U, 1U, 2U, 3U, 5U, 300U})
      EXPECT_EQ(quick_impulse_response(slow_sections(sections), count),
                impulse_response(slow_sections(sections), count))
          << sections << " sections, " << count << " samples";
}

TEST(QuickImpulse, WhatHasDecayedIsNothing) {
  const auto found = quick_impulse_response({{1, 0, 0, -0.5, 0}}, 2000);
  EXPECT_EQ(found[500], std::ldexp(1.0, -500));
  EXPECT_EQ(found.back(), 0.0);
}

// Both orders are of the same filter; what differs is rounding.
TEST(QuickArrangement, HasTheResponseOfTheFilter) {
  for (const data::Case &one : data::cases()) {
    const Sections quick = quickly_arranged(one.sections);
    ASSERT_EQ(quick.size(), one.sections.size());
    constexpr std::size_t count = 3000;
    const auto found = quick_impulse_response(quick, count);
    const auto expected =
        impulse_response(arranged(one.sections, Structure::direct_2_transposed), count);
    double largest = 0.0, apart = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
      largest = std::max(largest, std::fabs(expected[i]));
      apart = std::max(apart, std::fabs(found[i] - expected[i]));
    }
    EXPECT_LE(apart, 1e-6 * largest) << one.name;
  }
}

TEST(QuickArrangement, LeavesWhatDoesNotRun) {
  const Sections unstable{{1, 0, 0, -3, 0}, {1, 0, 0, 0.5, 0}};
  EXPECT_EQ(quickly_arranged(unstable).front().a1, -3);
  EXPECT_TRUE(quickly_arranged({}).empty());
}

}  // namespace
