// Filtering in both directions.

#include "signals/zero_phase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "designer/refusal.h"
#include "signal.h"

using signals::ZeroPhase;
using testing::HasSubstr;

namespace {

std::vector<double> both_ways(const analysis::Sections &sections, std::size_t channels,
                              const std::vector<double> &frames, std::size_t block) {
  ZeroPhase filter(sections, channels);
  for (std::size_t at = 0; at < frames.size(); at += block * channels)
    filter.add(std::span(frames).subspan(at, std::min(block * channels, frames.size() - at)));
  filter.turn([](double) {});
  std::vector<double> result, part(block * channels);
  for (std::size_t count = filter.read(part); count > 0; count = filter.read(part))
    result.insert(result.end(), part.begin(),
                  part.begin() + static_cast<std::ptrdiff_t>(count * channels));
  return result;
}

}  // namespace

// As SciPy counts: 3 (2 n + 1), less 3 for each section without both z^-2.
TEST(ZeroPhase, EdgesAreAsLongAsThoseOfSosfiltfilt) {
  EXPECT_EQ(signals::edge_frames({{1, 1, 1, 0, 0.5}}), 9U);
  EXPECT_EQ(signals::edge_frames({{1, 1, 0, 0.5, 0}}), 6U);
  EXPECT_EQ(signals::edge_frames({{1, 1, 1, 0, 0.5}, {1, 1, 0, 0.5, 0}}), 12U);
  EXPECT_EQ(signals::edge_frames({{1, 1, 0, 0.5, 0.25}}), 9U) << "its pole at z^-2 counts";
}

TEST(ZeroPhase, TheSameSignalInOtherBlocksIsTheSame) {
  for (const std::size_t channels : {1U, 2U, 3U}) {
    const std::vector<double> input = tests::noise(9000 * channels);
    const auto whole = both_ways(tests::some_sections(4), channels, input, 9000);
    EXPECT_EQ(whole.size(), input.size());
    for (const std::size_t block : {1U, 7U, 4096U})
      EXPECT_EQ(both_ways(tests::some_sections(4), channels, input, block), whole) << block;
  }
}

TEST(ZeroPhase, AnImpulseComesOutSymmetric) {
  constexpr std::size_t middle = 2000;
  std::vector<double> input(2 * middle + 1);
  input[middle] = 1.0;
  const auto output = both_ways(tests::some_sections(3), 1, input, 512);
  const double peak = *std::max_element(output.begin(), output.end());
  EXPECT_GT(peak, 0.01);
  for (std::size_t i = 1; i < middle; ++i)
    ASSERT_NEAR(output[middle - i], output[middle + i], 1e-14 * peak) << i;
}

// A line goes on beyond both its ends, so that only what a filter of a pole at 0.5 remembers over the
// edge of 6 samples is to be seen, 2^-6 of a step each way. Of a constant nothing is.
TEST(ZeroPhase, AStraightLineStaysStraight) {
  const analysis::Sections lowpass{{0.25, 0.25, 0.0, -0.5, 0.0}};
  std::vector<double> line(500);
  for (std::size_t i = 0; i < line.size(); ++i) line[i] = 3.0 + 0.01 * static_cast<double>(i);
  const auto output = both_ways(lowpass, 1, line, 100);
  for (std::size_t i = 0; i < line.size(); ++i)
    ASSERT_NEAR(output[i], line[i], 2.0 * 0.01 * 0x1p-6) << i;
  std::vector<double> constant(500, -7.0);
  for (const double sample : both_ways(lowpass, 1, constant, 100)) ASSERT_NEAR(sample, -7.0, 1e-13);
}

TEST(ZeroPhase, ASignalMustBeLongerThanItsEdges) {
  const analysis::Sections sections = tests::some_sections(2);
  const std::size_t edge = signals::edge_frames(sections);
  EXPECT_EQ(both_ways(sections, 2, tests::noise((edge + 1) * 2), 3).size(), (edge + 1) * 2);
  try {
    both_ways(sections, 2, tests::noise(edge * 2), 3);
    FAIL() << "it was not refused";
  } catch (const designer::Refusal &refusal) {
    EXPECT_THAT(refusal.what(), HasSubstr("a signal of 12 samples is too short"));
    EXPECT_THAT(refusal.what(), HasSubstr("at least 13"));
  }
}
