// The panels over frequency: what is marked in them, and what their titles say.

#include <gmock/gmock.h>

#include "designed.h"
#include "pictures/ranges.h"
#include "pictures/response_panels.h"

using pictures::Axis;
using pictures::delay_panel;
using pictures::DrawnFilter;
using pictures::level_panel;
using pictures::passband_axis;
using pictures::passband_panel;
using pictures::ResponsePanel;
using pictures::Scale;
using pictures::whole_axis;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using tests::drawn;

namespace {

ResponsePanel levels_of(const std::vector<DrawnFilter> &filters) {
  return level_panel(filters, whole_axis(filters, Scale::logarithmic), {-99.0, 1.0});
}

}  // namespace

// Below 2 % of the axis a line for the ripple would be hidden by the curve.
TEST(ResponsePanels, ARippleHasALineWhereItCanBeSeen) {
  DrawnFilter filter = drawn("chebyshev-1", "lowpass", 3, {3000});
  filter.ripple = 1.99;
  EXPECT_THAT(levels_of({filter}).limits, IsEmpty());
  EXPECT_THAT(passband_panel({filter}, passband_axis({filter}, Scale::logarithmic)).limits,
              ElementsAre(-1.99));
  filter.ripple = 2.01;
  EXPECT_THAT(levels_of({filter}).limits, ElementsAre(-2.01));
}

TEST(ResponsePanels, ALimitOutsideHasNoLine) {
  DrawnFilter filter = drawn("chebyshev-2", "lowpass", 3, {3000});
  EXPECT_THAT(levels_of({filter}).limits, ElementsAre(-96.0));
  filter.attenuation = 99.0;
  EXPECT_THAT(levels_of({filter}).limits, IsEmpty());
}

TEST(ResponsePanels, ACutoffThatFiltersShareIsMarkedOnce) {
  const std::vector<DrawnFilter> filters{drawn("butterworth", "lowpass", 2, {3000}),
                                         drawn("butterworth", "bandpass", 2, {1000, 3000})};
  EXPECT_THAT(levels_of(filters).cutoffs, ElementsAre(1000.0, 3000.0));
  EXPECT_THAT(level_panel(filters, {2000.0, 4000.0}, {-99.0, 1.0}).cutoffs, ElementsAre(3000.0));
}

TEST(ResponsePanels, HalfPowerIsMarkedOnTheCurves) {
  const ResponsePanel panel = levels_of({drawn("butterworth", "lowpass", 2, {3000}),
                                         drawn("butterworth", "bandpass", 2, {1000, 3000})});
  ASSERT_THAT(panel.half_power, SizeIs(2));
  EXPECT_THAT(panel.half_power[0].x, SizeIs(1));
  EXPECT_THAT(panel.half_power[1].x, SizeIs(2));
  for (const auto &marks : panel.half_power)
    EXPECT_THAT(marks.y, testing::Each(testing::DoubleNear(tests::half_power_level, 1e-6)));
}

TEST(ResponsePanels, TheLevelsTitleSaysWhatOneMustKnow) {
  const DrawnFilter sound = drawn("butterworth", "lowpass", 2, {3000});
  const DrawnFilter silent = drawn("butterworth", "lowpass", 200, {20});
  const DrawnFilter unstable = drawn("butterworth", "bandpass", 3, {3000, 1000});
  EXPECT_EQ(levels_of({sound}).title, "Level");
  EXPECT_EQ(levels_of({silent}).title, "Level without the gain, which is 0: the filter is silent");
  EXPECT_EQ(levels_of({unstable}).title,
            "Level; the filter is unstable, with poles outside the unit circle");
  EXPECT_EQ(levels_of({sound, silent, unstable, silent}).title,
            "Level; silent, drawn without the gain, which is 0: 2, 4; unstable: 3");
}

TEST(ResponsePanels, ADelayHasAUnitThatLeavesFewDigits) {
  const auto unit = [](double cutoff) {
    const DrawnFilter filter = drawn("butterworth", "lowpass", 2, {cutoff});
    return delay_panel({filter}, passband_axis({filter}, Scale::logarithmic)).value.label;
  };
  EXPECT_EQ(unit(5000), "delay in \u00b5s");
  EXPECT_EQ(unit(100), "delay in ms");
}

TEST(ResponsePanels, SamplesAreCountedWhereAllFiltersHaveOneRate) {
  const DrawnFilter filter = drawn("butterworth", "lowpass", 2, {1000});
  DrawnFilter faster = filter;
  faster.samplerate = 96000;
  const Axis frequencies = passband_axis({filter}, Scale::logarithmic);
  const ResponsePanel same = delay_panel({filter, filter}, frequencies);
  ASSERT_TRUE(same.right.has_value());
  EXPECT_EQ(same.right->label, "delay in samples");
  EXPECT_NEAR(same.right->axis.high, same.value.axis.high * 1e-6 * 48000, 1e-6);
  EXPECT_FALSE(delay_panel({filter, faster}, frequencies).right.has_value());
}
