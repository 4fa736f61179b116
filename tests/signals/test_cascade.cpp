// Cascades that run over signals, held against the recursion written out.

#include "signals/cascade.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "signal.h"

using signals::Cascade;
using testing::Each;

namespace {

// Direct form II transposed, a section and a sample at a time.
std::vector<double> filtered(const analysis::Sections &sections, std::vector<double> signal) {
  for (const analysis::Section &s : sections) {
    double s1 = 0.0, s2 = 0.0;
    for (double &x : signal) {
      const double y = s.b0 * x + s1;
      s1 = (s.b1 * x + s2) - s.a1 * y;
      s2 = s.b2 * x - s.a2 * y;
      x = y;
    }
  }
  return signal;
}

std::vector<double> in_blocks(Cascade cascade, std::vector<double> frames, std::size_t block) {
  const std::size_t step = block * cascade.channels();
  for (std::size_t at = 0; at < frames.size(); at += step)
    cascade.run(std::span(frames).subspan(at, std::min(step, frames.size() - at)));
  return frames;
}

}  // namespace

// Channels are computed in groups of 8, 4, 2 and 1, and sections in groups of 4 and 2: all that fill
// them, fill them partly, or leave one over.
TEST(Cascade, IsTheRecursionToTheBitForAnyNumberOfChannelsAndSections) {
  constexpr std::size_t frames = 200;
  for (std::size_t channels = 1; channels <= 17; ++channels)
    for (std::size_t count = 0; count <= 9; ++count) {
      const std::vector<double> input = tests::noise(frames * channels);
      std::vector<double> output = input;
      Cascade(tests::some_sections(count), channels).run(output);
      for (std::size_t c = 0; c < channels; ++c)
        ASSERT_EQ(tests::channel(output, c, channels),
                  filtered(tests::some_sections(count), tests::channel(input, c, channels)))
            << count << " sections, channel " << c << " of " << channels;
    }
}

TEST(Cascade, BlocksOfAnySizeGiveWhatTheWholeGives) {
  for (const std::size_t channels : {1U, 2U, 3U, 8U}) {
    const Cascade cascade(tests::some_sections(5), channels);
    const std::vector<double> input = tests::noise(5000 * channels);
    const std::vector<double> whole = in_blocks(cascade, input, 5000);
    for (const std::size_t block : {1U, 2U, 3U, 4U, 5U, 64U, 1023U})
      ASSERT_EQ(in_blocks(cascade, input, block), whole)
          << "blocks of " << block << ", " << channels << " channels";
  }
}

TEST(Cascade, AConstantGoesOnWhereItHasSettled) {
  for (const std::size_t channels : {1U, 2U, 3U, 4U, 8U, 9U}) {
    const analysis::Sections sections = tests::some_sections(6);
    double gain = 1.0;
    for (const analysis::Section &s : sections) gain *= (s.b0 + s.b1 + s.b2) / (1.0 + s.a1 + s.a2);
    std::vector<double> frame(channels), frames;
    for (std::size_t c = 0; c < channels; ++c) frame[c] = 1.0 + static_cast<double>(c);
    for (int i = 0; i < 50; ++i) frames.insert(frames.end(), frame.begin(), frame.end());
    Cascade cascade(sections, channels);
    cascade.settle(frame);
    cascade.run(frames);
    for (std::size_t i = 0; i < frames.size(); ++i)
      ASSERT_NEAR(frames[i], gain * frame[i % channels], 1e-13 * gain * frame[i % channels]);
  }
}

// Its own numbers would go on for more than a million samples, most of them with few digits.
TEST(Cascade, SilenceBecomesZero) {
  Cascade cascade({{1.0, 0.0, 0.0, -0.999, 0.0}}, 1);
  std::vector<double> block{1.0};
  cascade.run(block);
  for (int i = 0; i < 100; ++i) {
    block.assign(10000, 0.0);
    cascade.run(block);
  }
  EXPECT_THAT(block, Each(0.0));
}

TEST(Cascade, QuietSignalsStayAsTheyAre) {
  Cascade cascade(tests::some_sections(3), 1);
  std::vector<double> quiet = tests::noise(1000), loud = quiet;
  for (double &sample : quiet) sample *= 0x1p-600;
  const auto expected = in_blocks(cascade, loud, 100);
  std::vector<double> output = in_blocks(cascade, quiet, 100);
  for (double &sample : output) sample *= 0x1p600;
  EXPECT_EQ(output, expected);
}
