// The ranges show what there is to see.

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "designed.h"
#include "pictures/ranges.h"

using pictures::Axis;
using pictures::Curve;
using pictures::delay_axis;
using pictures::delay_curve;
using pictures::DrawnFilter;
using pictures::passband_axis;
using pictures::passband_levels;
using pictures::Scale;
using pictures::usual_floor;
using pictures::whole_axis;
using tests::drawn;

TEST(Ranges, ShowANarrowBandAtTwentyHertz) {
  const DrawnFilter band = drawn("butterworth", "bandpass", 5, {20, 21});
  const Axis whole = whole_axis({band});
  EXPECT_LE(whole.low, 2.0);
  EXPECT_EQ(whole.high, 24000.0);
  EXPECT_TRUE(whole.is_logarithmic());
  const Axis enlarged = passband_axis({band});
  EXPECT_FALSE(enlarged.is_logarithmic());
  EXPECT_GT(enlarged.low, 19.0);
  EXPECT_LT(enlarged.high, 22.0);
}

TEST(Ranges, ABandDecadesWideIsEnlargedOnALogarithmicAxis) {
  EXPECT_TRUE(passband_axis({drawn("butterworth", "bandpass", 2, {20, 20000})}).is_logarithmic());
  EXPECT_TRUE(passband_axis({drawn("butterworth", "bandstop", 2, {20, 20000})}).is_logarithmic());
  EXPECT_TRUE(passband_axis({drawn("butterworth", "highpass", 2, {20})}).is_logarithmic());
  EXPECT_FALSE(passband_axis({drawn("butterworth", "highpass", 2, {20000})}).is_logarithmic());
}

TEST(Ranges, OfLowpassesDecadesApartShowBothCutoffs) {
  const Axis axis = passband_axis(
      {drawn("butterworth", "lowpass", 2, {50}), drawn("butterworth", "lowpass", 2, {5000})});
  EXPECT_TRUE(axis.is_logarithmic());
  EXPECT_GT(axis.low, 0.0);
  EXPECT_LT(axis.low, 50.0);
  EXPECT_GT(axis.high, 5000.0);
}

TEST(Ranges, TheFloorShowsTheStopband) {
  EXPECT_EQ(usual_floor({drawn("chebyshev-2", "lowpass", 5, {3000})}), -120.0);
  designer::Settings deep = tests::settings("chebyshev-2", "lowpass", 30, {3000});
  deep.set("stopband_attenuation", {240.0});
  EXPECT_EQ(usual_floor({drawn(deep)}), -300.0);
}

TEST(Ranges, ThePassbandsLevelsShowItsRippleWholly) {
  const Axis levels = passband_levels({drawn("chebyshev-1", "lowpass", 5, {3000})});
  EXPECT_LT(levels.low, -0.5);
  EXPECT_GT(levels.low, -1.0);
  EXPECT_GT(levels.high, 0.0);
}

TEST(Ranges, OfCurvesHoldAllThatIsFinite) {
  const double inf = std::numeric_limits<double>::infinity();
  const Axis axis = pictures::range_of({{{1, 2, 3}, {-2.0, -inf, NAN}}, {{1, 2}, {5.0, 1.0}}});
  EXPECT_LT(axis.low, -2.0);
  EXPECT_GT(axis.high, 5.0);
  EXPECT_LT(axis.high, 6.0);
  const Axis without = pictures::range_of({{{1}, {NAN}}});
  EXPECT_EQ(without.low, 0.0);
  EXPECT_EQ(without.high, 1.0);
}

// Its delay at the edge is hundreds of times what it is in the middle.
TEST(Ranges, ASteepPeakOfTheDelayTakesALogarithmicAxis) {
  const auto axis_for = [](const DrawnFilter &filter) {
    const Axis frequencies = passband_axis({filter});
    return delay_axis({filter}, frequencies, {delay_curve(filter, frequencies)});
  };
  const Axis steep = axis_for(drawn("chebyshev-1", "bandstop", 40, {1000, 3000}));
  EXPECT_TRUE(steep.is_logarithmic());
  EXPECT_GT(steep.low, 0.0);
  const Axis flat = axis_for(drawn("butterworth", "lowpass", 2, {1000}));
  EXPECT_FALSE(flat.is_logarithmic());
  EXPECT_EQ(flat.low, 0.0);
}
