// How long a filter rings.

#include "signals/tail.h"

#include <gtest/gtest.h>

#include "signal.h"

namespace {

constexpr std::uint64_t long_enough = 10'000'000;

std::uint64_t tail(const analysis::Sections &sections, std::vector<double> input, double peak,
                   std::uint64_t most) {
  signals::Cascade cascade(sections, 1);
  cascade.run(input);
  return signals::tail_frames(cascade, sections, peak, most);
}

}  // namespace

// After an impulse the output is 0.99^n: above 1e-6 until n = ln 1e-6 / ln 0.99 = 1374.6.
TEST(Tail, OfOnePoleIsItsExponential) {
  const analysis::Sections one_pole{{1.0, 0.0, 0.0, -0.99, 0.0}};
  EXPECT_EQ(tail(one_pole, {1.0}, 1.0, long_enough), 1374U);
  EXPECT_EQ(tail(one_pole, {1.0}, 2.0, long_enough), 1305U) << "below a peak of 2";
  EXPECT_EQ(tail(one_pole, {1.0}, 1.0, 100), 100U) << "cut off";
}

TEST(Tail, OfAFilterWithoutPolesIsItsMemory) {
  EXPECT_EQ(tail({{1.0, 1.0, 1.0, 0.0, 0.0}}, {1.0}, 1.0, long_enough), 2U);
  const analysis::Section delay{0.0, 0.0, 1.0, 0.0, 0.0};
  EXPECT_EQ(tail(analysis::Sections(40, delay), {1.0}, 1.0, long_enough), 80U)
      << "silent at first, and not over";
}

TEST(Tail, OfSilenceIsNone) {
  EXPECT_EQ(tail(tests::some_sections(3), std::vector<double>(100), 0.0, long_enough), 0U);
}

TEST(Tail, IsThatOfTheLoudestChannel) {
  const analysis::Sections one_pole{{1.0, 0.0, 0.0, -0.99, 0.0}};
  signals::Cascade cascade(one_pole, 2);
  std::vector<double> frame{1e-3, 1.0};
  cascade.run(frame);
  EXPECT_EQ(signals::tail_frames(cascade, one_pole, 1.0, long_enough), 1374U);
}
