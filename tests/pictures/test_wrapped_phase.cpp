// A phase within half a turn of 0.

#include "pictures/wrapped_phase.h"

#include <gmock/gmock.h>

#include <cmath>

#include "designed.h"
#include "pictures/ranges.h"
#include "pictures/response_panels.h"

using pictures::Curve;
using pictures::passband_axis;
using pictures::phase_curve;
using pictures::phase_panel;
using pictures::wrapped_phase;
using testing::ElementsAre;
using testing::NanSensitiveDoubleEq;

namespace {

constexpr double gap = std::numeric_limits<double>::quiet_NaN();

}  // namespace

TEST(WrappedPhase, IsLeftAloneWithinItsRange) {
  const Curve curve{{1, 2, 3, 4}, {180, -179, gap, 0}};
  const Curve straight{{1, 2, 3}, {180, 0, -179}};
  EXPECT_THAT(wrapped_phase(straight).y, ElementsAre(180, 0, -179));
  EXPECT_THAT(wrapped_phase(curve).x, ElementsAre(1, 2, 3, 4));
}

TEST(WrappedPhase, LeavesAtOneEndAndGoesOnAtTheOther) {
  const Curve falling = wrapped_phase({{10, 20}, {-90, -270}});
  EXPECT_THAT(falling.x, ElementsAre(10, 15, 15, 15, 20));
  EXPECT_THAT(falling.y, ElementsAre(-90, -180, NanSensitiveDoubleEq(gap), 180, 90));
  const Curve rising = wrapped_phase({{10, 20}, {90, 270}});
  EXPECT_THAT(rising.y, ElementsAre(90, 180, NanSensitiveDoubleEq(gap), -180, -90));
}

TEST(WrappedPhase, PassesSeveralTurnsBetweenTwoPoints) {
  const Curve curve = wrapped_phase({{0, 1}, {0, -900}});
  ASSERT_EQ(curve.x.size(), 2U + 3 * 3);
  EXPECT_DOUBLE_EQ(curve.x[1], 0.2);
  EXPECT_DOUBLE_EQ(curve.x[4], 0.6);
  EXPECT_DOUBLE_EQ(curve.y.back(), 180);
}

TEST(WrappedPhase, StaysInterruptedWhereItWas) {
  const Curve curve = wrapped_phase({{0, 1, 2}, {-170, gap, -350}});
  EXPECT_THAT(curve.y, ElementsAre(-170, NanSensitiveDoubleEq(gap), 10));
}

TEST(WrappedPhase, OfAFilterIsItsPhaseButForTurns) {
  const auto filter = tests::drawn("butterworth", "bandpass", 20, {1000, 2000});
  const auto axis = passband_axis({filter}, pictures::Scale::logarithmic);
  for (const auto detail : {pictures::Detail::full, pictures::Detail::live}) {
    const auto panel = phase_panel({filter}, axis, pictures::PhaseForm::wrapped, detail);
    EXPECT_EQ(panel.value.axis.low, -180);
    EXPECT_EQ(panel.value.axis.high, 180);
    const Curve &curve = panel.curves.front();
    const Curve continuous = phase_curve(filter, axis, detail);
    // It falls by some 2700 degrees between the ends of the axis.
    const double fall = continuous.y.front() - continuous.y.back();
    EXPECT_GT(fall, 2000.0);
    EXPECT_NEAR(static_cast<double>(curve.x.size() - continuous.x.size()), 3 * fall / 360.0, 3.0);
    std::size_t next = 0;
    for (std::size_t i = 0; i < continuous.x.size(); ++i) {
      while (curve.x[next] != continuous.x[i]) ++next;
      if (std::isnan(continuous.y[i])) continue;
      EXPECT_NEAR(std::remainder(curve.y[next] - continuous.y[i], 360.0), 0.0, 1e-9);
    }
    for (const double y : curve.y) EXPECT_FALSE(std::fabs(y) > 180.0);
  }
}
