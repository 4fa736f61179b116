// The ranges show what there is to see.

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "designed.h"
#include "pictures/ranges.h"
#include "pictures/ticks.h"

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

// Three decades of axis would leave it a few pixels.
TEST(Ranges, ANarrowBandIsSeenWithItsSurroundings) {
  for (const char *response : {"bandpass", "bandstop"})
    for (const Scale scale : {Scale::linear, Scale::logarithmic}) {
      const Axis axis = whole_axis({drawn("butterworth", response, 4, {59, 61})}, scale);
      EXPECT_EQ(axis.scale, scale);
      const double width = fraction_along(axis, 61) - fraction_along(axis, 59);
      EXPECT_NEAR(width, 1.0 / 17.0, 1e-4);
      EXPECT_NEAR(fraction_along(axis, 59), 8.0 / 17.0, 1e-4);
    }
}

TEST(Ranges, AWideBandIsSeenFromADecadeBelowToHalfTheSampleRate) {
  const Axis axis =
      whole_axis({drawn("butterworth", "bandpass", 4, {300, 3400})}, Scale::logarithmic);
  EXPECT_EQ(axis.low, 20.0);
  EXPECT_EQ(axis.high, 24000.0);
}

TEST(Ranges, ABandAtTheEndOfTheSpectrumEndsThere) {
  const Axis axis =
      whole_axis({drawn("butterworth", "bandpass", 4, {20000, 22000})}, Scale::linear);
  EXPECT_EQ(axis.high, 24000.0);
  EXPECT_NEAR(axis.low, 4000.0, 0.1);
}

TEST(Ranges, OfSeveralFiltersShowAll) {
  const Axis axis = whole_axis({drawn("butterworth", "bandpass", 4, {59, 61}),
                                drawn("butterworth", "bandpass", 4, {49, 51})},
                               Scale::linear);
  EXPECT_NEAR(axis.low, 33.0, 1e-3);
  EXPECT_NEAR(axis.high, 77.0, 1e-3);
}

TEST(Ranges, LinearOnesBeginWithNothing) {
  for (const char *response : {"lowpass", "highpass"}) {
    const DrawnFilter filter = drawn("butterworth", response, 4, {1000});
    const Axis axis = whole_axis({filter}, Scale::linear);
    EXPECT_FALSE(axis.is_logarithmic());
    EXPECT_EQ(axis.low, 0.0);
    EXPECT_EQ(axis.high, 24000.0);
    EXPECT_FALSE(passband_axis({filter}, Scale::linear).is_logarithmic());
  }
  for (const char *response : {"bandpass", "bandstop"}) {
    const Axis axis =
        passband_axis({drawn("butterworth", response, 4, {20, 20000})}, Scale::linear);
    EXPECT_FALSE(axis.is_logarithmic());
    EXPECT_EQ(axis.low, 0.0);
    EXPECT_GT(axis.high, 20000.0);
  }
}

TEST(Ranges, ShowANarrowBandAtTwentyHertz) {
  const DrawnFilter band = drawn("butterworth", "bandpass", 5, {20, 21});
  const Axis enlarged = passband_axis({band}, Scale::logarithmic);
  EXPECT_FALSE(enlarged.is_logarithmic());
  EXPECT_GT(enlarged.low, 19.0);
  EXPECT_LT(enlarged.high, 22.0);
}

TEST(Ranges, ABandDecadesWideIsEnlargedOnALogarithmicAxis) {
  EXPECT_TRUE(passband_axis({drawn("butterworth", "bandpass", 2, {20, 20000})}, Scale::logarithmic)
                  .is_logarithmic());
  EXPECT_TRUE(passband_axis({drawn("butterworth", "bandstop", 2, {20, 20000})}, Scale::logarithmic)
                  .is_logarithmic());
  EXPECT_TRUE(passband_axis({drawn("butterworth", "highpass", 2, {20})}, Scale::logarithmic)
                  .is_logarithmic());
  EXPECT_FALSE(passband_axis({drawn("butterworth", "highpass", 2, {20000})}, Scale::logarithmic)
                   .is_logarithmic());
}

TEST(Ranges, OfLowpassesDecadesApartShowBothCutoffs) {
  const Axis axis = passband_axis(
      {drawn("butterworth", "lowpass", 2, {50}), drawn("butterworth", "lowpass", 2, {5000})},
      Scale::logarithmic);
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
    const Axis frequencies = passband_axis({filter}, Scale::logarithmic);
    return delay_axis({filter}, frequencies, {delay_curve(filter, frequencies)});
  };
  const Axis steep = axis_for(drawn("chebyshev-1", "bandstop", 40, {1000, 3000}));
  EXPECT_TRUE(steep.is_logarithmic());
  EXPECT_GT(steep.low, 0.0);
  const Axis flat = axis_for(drawn("butterworth", "lowpass", 2, {1000}));
  EXPECT_FALSE(flat.is_logarithmic());
  EXPECT_EQ(flat.low, 0.0);
}

// Far above its cutoff, a highpass delays by less than a millionth of what it does below.
TEST(Ranges, ALogarithmicDelayHasAtMostFourDecades) {
  const DrawnFilter filter = drawn("butterworth", "highpass", 4, {20});
  const Axis frequencies = passband_axis({filter}, Scale::logarithmic);
  const Curve delay = delay_curve(filter, frequencies);
  ASSERT_LT(*std::min_element(delay.y.begin(), delay.y.end()), 1e-7);
  const Axis axis = delay_axis({filter}, frequencies, {delay});
  EXPECT_TRUE(axis.is_logarithmic());
  EXPECT_LT(axis.high / axis.low, 2e4);
  for (const pictures::Tick &tick :
       pictures::ticks(axis.scaled(1e3), pictures::TickStyle::magnitudes, 6))
    EXPECT_LE(tick.label.size(), 5U) << tick.label;
}

// Between the edges, where this band is delayed least.
TEST(Ranges, ALogarithmicDelayReachesTheLeastOne) {
  const DrawnFilter filter = drawn("butterworth", "bandpass", 8, {20, 20000});
  const Axis frequencies = passband_axis({filter}, Scale::logarithmic);
  const Curve delay = delay_curve(filter, frequencies);
  const Axis axis = delay_axis({filter}, frequencies, {delay});
  EXPECT_TRUE(axis.is_logarithmic());
  EXPECT_LT(axis.low, *std::min_element(delay.y.begin(), delay.y.end()));
}
