// The levels of a filter without settings.

#include <cmath>

#include "check_test.h"

using testing::HasSubstr;
using testing::StartsWith;
using namespace verdict;

// The bilinear transform of 1 / (s + 1) at a quarter of the sample rate: half the power there, none
// at the Nyquist frequency.
TEST(CheckResponse, ALowpassOfFirstOrderIsDescribedByItsLevels) {
  const Verdict verdict = checked_sections({{0.5, 0.5, 0, 0, 0}});
  EXPECT_EQ(fact(verdict, "levels"),
            "0 dB at 0 Hz, below -200 dB at 24000 Hz, and at most 0 dB at 0 Hz\n");
  EXPECT_EQ(fact(verdict, "-3 dB"), "at 12000 Hz\n");
  EXPECT_TRUE(problems(verdict).empty());
}

TEST(CheckResponse, AResonanceIsFoundAtItsTop) {
  const double radius = 0.999, angle = 2 * std::acos(-1.0) * 1000 / 48000;
  const Verdict verdict =
      checked_sections({{1, 0, 0, -2 * radius * std::cos(angle), radius * radius}});
  EXPECT_NEAR(measured(verdict, "highest_hz"), 1000, 0.1);
  EXPECT_NEAR(measured(verdict, "highest_db"),
              -20 * std::log10((1 - radius) * std::abs(1.0 - std::polar(radius, -2 * angle))),
              1e-3);
  EXPECT_THAT(fact(verdict, "-3 dB"), HasSubstr(" and "));
}

TEST(CheckResponse, ManyCrossingsAreCounted) {
  // A comb of four delays has the same peak five times.
  analysis::Sections comb;
  for (const double angle : {0.25, 0.75}) {
    const double cosine = std::cos(angle * std::acos(-1.0));
    comb.push_back({1, 0, 0, -2 * 0.9 * cosine, 0.81});
  }
  comb.push_back({1, 0, 0, 0, -0.81});
  const Verdict verdict = checked_sections(comb);
  EXPECT_THAT(fact(verdict, "-3 dB"), StartsWith("6 times, the first at "));
}

TEST(CheckResponse, ASectionThatBeginsWithADelayIsNotSilent) {
  const Verdict verdict = checked_sections({{0, 0.5, 0, -0.5, 0}});
  EXPECT_TRUE(problems(verdict).empty());
  EXPECT_THAT(fact(verdict, "levels"), StartsWith("0 dB at 0 Hz"));
}
