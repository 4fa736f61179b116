// Curves meet what they are to show.

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "designed.h"
#include "pictures/curves.h"
#include "pictures/ranges.h"

using pictures::Axis;
using pictures::Curve;
using pictures::delay_curve;
using pictures::DrawnFilter;
using pictures::level_curve;
using pictures::median_delay;
using pictures::passband_axis;
using pictures::phase_curve;
using pictures::Scale;
using pictures::whole_axis;
using testing::IsEmpty;
using testing::SizeIs;
using tests::drawn;
using tests::half_power_level;

namespace {

double level_in(const Curve &curve, double hz) {
  const auto found = std::min_element(curve.x.begin(), curve.x.end(), [&](double x, double y) {
    return std::fabs(x - hz) < std::fabs(y - hz);
  });
  EXPECT_NEAR(*found, hz, 1e-9 * hz) << "no point of the curve is there";
  return curve.y[static_cast<std::size_t>(found - curve.x.begin())];
}

double highest(const Curve &curve) { return *std::max_element(curve.y.begin(), curve.y.end()); }

}  // namespace

TEST(Curves, LevelAtAButterworthsCutoffsIsHalfThePower) {
  for (const t_long order : {2, 5, 200}) {
    const DrawnFilter lowpass = drawn("butterworth", "lowpass", order, {3000});
    for (const Axis &axis :
         {whole_axis({lowpass}, Scale::logarithmic), passband_axis({lowpass}, Scale::logarithmic)})
      EXPECT_NEAR(level_in(level_curve(lowpass, axis), 3000), half_power_level, 1e-6);
    ASSERT_THAT(lowpass.half_power, SizeIs(1));
    EXPECT_NEAR(lowpass.half_power[0], 3000, 1e-5);
  }
}

TEST(Curves, ANarrowBandAtTwentyHertzIsMetWholly) {
  const DrawnFilter band = drawn("butterworth", "bandpass", 5, {20, 21});
  const Curve curve = level_curve(band, whole_axis({band}, Scale::logarithmic));
  EXPECT_NEAR(highest(curve), 0.0, 1e-3);
  EXPECT_NEAR(level_in(curve, 20), half_power_level, 1e-6);
  EXPECT_NEAR(level_in(curve, 21), half_power_level, 1e-6);
}

// Each of the 100 waves, the narrowest of which is 0.4 Hz wide.
TEST(Curves, EveryRippleReachesItsBounds) {
  const DrawnFilter ripple = drawn("chebyshev-1", "lowpass", 200, {3000});
  const Curve curve = level_curve(ripple, {0.0, 3000.0});
  int tops = 0;
  for (std::size_t i = 1; i + 1 < curve.y.size(); ++i) {
    if (curve.y[i] > curve.y[i - 1] && curve.y[i] >= curve.y[i + 1] && curve.y[i] > -0.25) {
      EXPECT_NEAR(curve.y[i], 0.0, 0.01) << curve.x[i];
      ++tops;
    }
    EXPECT_GE(curve.y[i], -0.5 - 1e-4);
  }
  EXPECT_EQ(tops, 100);
}

// Minus the slope of the phase; so that its integral is what the phase loses.
TEST(Curves, DelayIsWhatThePhaseLoses) {
  for (const DrawnFilter &filter : {drawn("butterworth", "lowpass", 4, {1000}),
                                    drawn("chebyshev-1", "bandpass", 3, {500, 700})}) {
    const Axis axis{100.0, 20000.0, Scale::logarithmic};
    const Curve phase = phase_curve(filter, axis);
    const Curve delay = delay_curve(filter, axis);
    double turns = 0.0;
    for (std::size_t i = 1; i < delay.x.size(); ++i)
      turns += (delay.x[i] - delay.x[i - 1]) * (delay.y[i] + delay.y[i - 1]) / 2;
    EXPECT_NEAR(360.0 * turns, phase.y.front() - phase.y.back(), 0.2);
  }
}

TEST(Curves, ThePhaseIsInterruptedAtZerosOnTheCircle) {
  const DrawnFilter filter = drawn("chebyshev-2", "lowpass", 9, {3000});
  const Curve phase = phase_curve(filter, {1.0, 23999.0, Scale::logarithmic});
  std::size_t interruptions = 0;
  for (std::size_t i = 1; i < phase.y.size(); ++i) {
    if (std::isnan(phase.y[i])) ++interruptions;
    if (std::isnan(phase.y[i]) || std::isnan(phase.y[i - 1])) continue;
    EXPECT_LT(std::fabs(phase.y[i] - phase.y[i - 1]), 30.0) << phase.x[i];
  }
  EXPECT_EQ(interruptions, 4U);
}

TEST(Curves, EndAtHalfTheSampleRate) {
  const DrawnFilter filter = drawn("butterworth", "lowpass", 2, {3000});
  EXPECT_EQ(level_curve(filter, {100.0, 96000.0, Scale::logarithmic}).x.back(), 24000.0);
  EXPECT_THAT(level_curve(filter, {24000.0, 96000.0, Scale::logarithmic}).x, IsEmpty());
}

TEST(Curves, TheMedianDelayOfAFirstOrderLowpassLiesBetweenItsEnds) {
  const DrawnFilter filter = drawn("butterworth", "lowpass", 1, {1000});
  const Axis axis{100.0, 10000.0};
  const Curve delay = delay_curve(filter, axis);
  const double median = median_delay(filter, axis);
  EXPECT_LT(median, delay.y.front());
  EXPECT_GT(median, delay.y.back());
  // The delay of this filter falls all the way, so that its median is at the middle.
  EXPECT_NEAR(median, level_in(delay, 5050.0), 1e-3 * median);
}
