// The difference of two levels, where both have one.

#include "pictures/level_difference.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "designed.h"

using pictures::Axis;
using pictures::Curve;
using pictures::Detail;
using pictures::DrawnFilter;
using pictures::level_difference_curve;
using pictures::Scale;
using testing::Each;

namespace {

const Axis all_hz{10, 22050, Scale::logarithmic};

}  // namespace

TEST(LevelDifference, OfAFilterAndItselfIsNothing) {
  const DrawnFilter filter = tests::drawn("butterworth", "lowpass", 4, {1000});
  const Axis axis{10, 20000, Scale::logarithmic};
  EXPECT_THAT(level_difference_curve(filter, filter, axis, Detail::live).y, Each(0.0));
}

TEST(LevelDifference, IsThatOfTheLevels) {
  const DrawnFilter first = tests::drawn("butterworth", "lowpass", 4, {1000});
  const DrawnFilter second = tests::drawn("chebyshev-1", "lowpass", 6, {3000});
  for (const Detail detail : {Detail::full, Detail::live}) {
    const Curve curve = level_difference_curve(first, second, all_hz, detail);
    EXPECT_GT(curve.x.size(), 600U);
    for (const double hz : {1000.0, 3000.0}) {
      const auto at = std::lower_bound(curve.x.begin(), curve.x.end(), hz * (1 - 1e-12));
      EXPECT_NEAR(*at, hz, 1e-9 * hz);
      EXPECT_NEAR(curve.y[static_cast<std::size_t>(at - curve.x.begin())],
                  tests::level_at(first, hz) - tests::level_at(second, hz), 1e-6);
    }
  }
}

// A highpass lets nothing pass at 0 Hz, and a lowpass nothing at the Nyquist frequency.
TEST(LevelDifference, IsInterruptedWhereAFilterPassesNothing) {
  const DrawnFilter lowpass = tests::drawn("butterworth", "lowpass", 4, {1000});
  const DrawnFilter highpass = tests::drawn("butterworth", "highpass", 4, {1000});
  const Axis axis{0, lowpass.nyquist(), Scale::linear};
  for (const Detail detail : {Detail::full, Detail::live}) {
    const Curve curve = level_difference_curve(lowpass, highpass, axis, detail);
    EXPECT_TRUE(std::isnan(curve.y.front()));
    EXPECT_TRUE(std::isnan(curve.y.back()));
    EXPECT_EQ(std::count_if(curve.y.begin(), curve.y.end(), [](double y) { return std::isnan(y); }),
              2);
  }
}

TEST(LevelDifference, EndsAtTheLowerOfBothNyquistFrequencies) {
  const DrawnFilter first = tests::drawn("butterworth", "lowpass", 4, {1000});
  DrawnFilter slower = first;
  slower.samplerate /= 4;
  const Curve curve = level_difference_curve(first, slower, all_hz, Detail::live);
  EXPECT_NEAR(curve.x.back(), slower.nyquist(), 1e-9);
}
