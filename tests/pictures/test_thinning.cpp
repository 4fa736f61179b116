// A thinned curve looks the same.

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "pictures/thinning.h"

using pictures::Canvas;
using pictures::Curve;
using pictures::thinned;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::Le;

namespace {

const Canvas canvas{{0.0, 10.0}, {-1.0, 1.0}, 10.0, 100.0};

}  // namespace

TEST(Thinning, EachColumnKeepsItsEndsAndExtremes) {
  Curve wave;
  for (int i = 0; i < 1000; ++i)
    wave.add(i / 100.0, i % 100 == 50 ? 0.9 : i % 100 == 60 ? -0.8 : 0.0);
  const Curve few = thinned(wave, canvas);
  EXPECT_LE(few.x.size(), 40U);
  EXPECT_EQ(std::count(few.y.begin(), few.y.end(), 0.9), 10);
  EXPECT_EQ(std::count(few.y.begin(), few.y.end(), -0.8), 10);
  EXPECT_EQ(few.x.front(), wave.x.front());
  EXPECT_EQ(few.x.back(), wave.x.back());
  EXPECT_TRUE(std::is_sorted(few.x.begin(), few.x.end()));
}

TEST(Thinning, FewPointsStayAsTheyAre) {
  const Curve few = thinned({{0.0, 3.5, 7.5}, {0.1, 0.2, 0.3}}, canvas);
  EXPECT_THAT(few.x, ElementsAre(0.0, 3.5, 7.5));
  EXPECT_THAT(few.y, ElementsAre(0.1, 0.2, 0.3));
}

TEST(Thinning, InterruptionsStay) {
  const Curve few = thinned({{1.1, 1.2, 1.3}, {0.5, NAN, -0.5}}, canvas);
  ASSERT_EQ(few.y.size(), 3U);
  EXPECT_TRUE(std::isnan(few.y[1]));
  EXPECT_EQ(few.x[1], 1.2);
}

// Rounded to a twentieth of a pixel, each of its points would be a step up or down.
TEST(Thinning, ALineThatIsLevelToTheEyeHasTwoPoints) {
  Curve level;
  for (int i = 0; i <= 1000; ++i) level.add(i / 100.0, i % 3 == 0 ? 4e-4 : -4e-4);
  EXPECT_THAT(thinned(level, canvas).x, ElementsAre(0.0, 10.0));
}

TEST(Thinning, NoPointLeftOutIsFurtherFromTheLineThanATwentiethOfAPixel) {
  Curve wave;
  for (int i = 0; i <= 5000; ++i) wave.add(i / 500.0, 0.8 * std::sin(i / 500.0));
  const Canvas fine{{0.0, 10.0}, {-1.0, 1.0}, 5000.0, 300.0};
  const Curve few = thinned(wave, fine);
  EXPECT_LT(few.x.size(), 400U);
  std::size_t next = 1;
  for (std::size_t i = 0; i < wave.x.size(); ++i) {
    while (few.x[next] < wave.x[i]) ++next;
    const double part = (wave.x[i] - few.x[next - 1]) / (few.x[next] - few.x[next - 1]);
    const double drawn = few.y[next - 1] + part * (few.y[next] - few.y[next - 1]);
    EXPECT_NEAR(drawn, wave.y[i], 0.0501 / 150.0) << wave.x[i];
  }
}

TEST(Thinning, WhatIsFarOutsideIsFiniteAndStillOutside) {
  const double inf = std::numeric_limits<double>::infinity();
  const Curve few = thinned({{0.0, 1.0, 2.0}, {-inf, inf, 1e300}}, canvas);
  EXPECT_THAT(few.y, ElementsAre(-5.0, 5.0, 5.0));
  const Canvas logarithmic{{0.0, 10.0}, {1.0, 100.0, pictures::Scale::logarithmic}, 10.0, 100.0};
  EXPECT_THAT(thinned({{0.0}, {-3.0}}, logarithmic).y, ElementsAre(0.1));
}
