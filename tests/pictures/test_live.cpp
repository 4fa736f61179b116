// Live pictures show what full ones do, with fewer points.

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "analysis/phase.h"
#include "designed.h"
#include "pictures/curves.h"
#include "pictures/figure.h"
#include "pictures/ranges.h"

using pictures::Axis;
using pictures::Curve;
using pictures::Detail;
using pictures::drawn_without_settings;
using pictures::DrawnFilter;
using pictures::figure_of;
using pictures::impulse_panel;
using pictures::passband_axis;
using pictures::Scale;
using pictures::step_panel;
using pictures::time_panels;
using pictures::whole_axis;

using testing::HasSubstr;

using testing::SizeIs;

namespace {

DrawnFilter drawn_live(const designer::Settings &settings) {
  return drawn_filter(designer::published_filter(tests::design(settings)), "the filter",
                      Detail::live);
}

std::vector<designer::Settings> many_settings() {
  std::vector<designer::Settings> all;
  for (const char *family : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const t_long order : {2, 5, 20, 200}) {
      all.push_back(tests::settings(family, "lowpass", order, {3000}));
      all.push_back(tests::settings(family, "highpass", order, {50}));
      all.push_back(tests::settings(family, "bandpass", order, {1000, 2000}));
      all.push_back(tests::settings(family, "bandstop", order, {1000, 1100}));
    }
  return all;
}

std::string name_of(const designer::Settings &settings) {
  return designer::title(tests::design(settings));
}

double level_near(const Curve &curve, double hz) {
  const auto found = std::min_element(curve.x.begin(), curve.x.end(), [&](double x, double y) {
    return std::fabs(x - hz) < std::fabs(y - hz);
  });
  EXPECT_NEAR(*found, hz, 1e-9 * hz) << "no point of the curve is there";
  return curve.y[static_cast<std::size_t>(found - curve.x.begin())];
}

}  // namespace

TEST(Live, PeakAndHalfPowerAreThoseOfTheFullFilter) {
  for (const designer::Settings &settings : many_settings()) {
    const DrawnFilter live = drawn_live(settings), full = tests::drawn(settings);
    EXPECT_NEAR(live.peak_db, full.peak_db, 0.001) << name_of(settings);
    ASSERT_EQ(live.half_power.size(), full.half_power.size()) << name_of(settings);
    for (std::size_t i = 0; i < live.half_power.size(); ++i)
      EXPECT_NEAR(live.half_power[i], full.half_power[i], 1e-3 * full.half_power[i])
          << name_of(settings);
    EXPECT_EQ(live.is_silent(), full.is_silent());
  }
}

TEST(Live, LevelsAreThoseOfTheFullFilterAtAFewHundredPoints) {
  for (const designer::Settings &settings : many_settings()) {
    const DrawnFilter live = drawn_live(settings);
    const Axis axis = whole_axis({live}, Scale::logarithmic);
    const Curve curve = level_curve(live, axis, Detail::live);
    EXPECT_GT(curve.x.size(), 600U) << name_of(settings);
    EXPECT_LT(curve.x.size(), 1800U) << name_of(settings);
    EXPECT_TRUE(std::is_sorted(curve.x.begin(), curve.x.end()));
    for (std::size_t i = 0; i < curve.x.size(); ++i) {
      const double full = tests::level_at(live, curve.x[i]);
      if (full > live.peak_db - 200) {
        EXPECT_NEAR(curve.y[i], full, 0.01) << name_of(settings) << " at " << curve.x[i];
      }
    }
  }
}

TEST(Live, PhaseAndDelayAreThoseOfTheFullFilter) {
  for (const designer::Settings &settings : many_settings()) {
    const DrawnFilter live = drawn_live(settings);
    const Axis axis = passband_axis({live}, Scale::logarithmic);
    const Curve phase = phase_curve(live, axis, Detail::live);
    const Curve delay = delay_curve(live, axis, Detail::live);
    for (std::size_t i = 0; i < phase.x.size(); i += 7)
      if (std::isfinite(phase.y[i])) {
        EXPECT_NEAR(
            phase.y[i],
            unwrapped_phase(live.roots, phase.x[i] / live.nyquist()) * 180 / std::numbers::pi, 0.01)
            << name_of(settings) << " at " << phase.x[i];
      }
    for (std::size_t i = 0; i < delay.x.size(); i += 7) {
      const double full = group_delay(live.roots, delay.x[i] / live.nyquist()) / live.samplerate;
      EXPECT_NEAR(delay.y[i], full, 1e-6 * std::fabs(full) + 1e-3 / live.samplerate)
          << name_of(settings) << " at " << delay.x[i];
    }
  }
}

TEST(Live, AButterworthsCutoffIsMetAtHalfThePower) {
  for (const t_long order : {2, 5, 20, 200}) {
    const DrawnFilter lowpass = drawn_live(tests::settings("butterworth", "lowpass", order, {20}));
    const Axis axis = whole_axis({lowpass}, Scale::logarithmic);
    EXPECT_NEAR(level_near(level_curve(lowpass, axis, Detail::live), 20), tests::half_power_level,
                1e-4);
    ASSERT_THAT(lowpass.half_power, SizeIs(1));
    EXPECT_NEAR(lowpass.half_power[0], 20, 1e-4);
  }
}

// Seen from afar it has one point at its bottom and two at its half-power points, and in a band of
// its own width it is wide.
TEST(Live, ANotchOfAThousandthOfAHertzHasItsBottom) {
  const DrawnFilter notch =
      drawn_live(tests::settings("butterworth", "bandstop", 2, {1000, 1000.001}));
  for (const Axis &axis :
       {Axis{1, 20000, Scale::logarithmic}, Axis{999.999, 1000.002, Scale::linear}}) {
    const Curve curve = level_curve(notch, axis, Detail::live);
    EXPECT_LT(*std::min_element(curve.y.begin(), curve.y.end()), -90.0);
    ASSERT_THAT(notch.half_power, SizeIs(2));
    for (const double hz : notch.half_power)
      EXPECT_NEAR(level_near(curve, hz), tests::half_power_level, 0.01);
  }
}

TEST(Live, AResonanceBetweenTwoStepsHasItsPeak) {
  const DrawnFilter band =
      drawn_live(tests::settings("butterworth", "bandpass", 2, {1000, 1000.01}));
  const Curve curve = level_curve(band, {1, 20000, Scale::logarithmic}, Detail::live);
  EXPECT_NEAR(*std::max_element(curve.y.begin(), curve.y.end()), 0.0, 0.01);
}

TEST(Live, ResponsesOverTimeAreThoseOfTheFullFilter) {
  for (const designer::Settings &settings : many_settings()) {
    const DrawnFilter filter = drawn_live(settings);
    const auto live = time_panels({filter}, {.detail = Detail::live});
    const auto full = time_panels({filter});
    for (const auto &[few, all] : {std::pair{live.impulse, full.impulse}, {live.step, full.step}}) {
      const Curve &some = few.curves.front();
      EXPECT_LT(some.x.size(), 1700U) << name_of(settings);
      if (few.title != all.title) continue;  // cut off, which the next test looks at
      const double height = all.amplitude.axis.high - all.amplitude.axis.low;
      EXPECT_NEAR(few.amplitude.axis.high, all.amplitude.axis.high, 1e-4 * height)
          << name_of(settings);
      EXPECT_EQ(few.amplitude.label, all.amplitude.label);
      EXPECT_NEAR(few.time.axis.high, all.time.axis.high, 0.01 * all.time.axis.high);
      const Curve &every = all.curves.front();
      for (std::size_t i = 0; i < some.x.size(); i += 5) {
        const auto at = static_cast<std::size_t>(
            std::lower_bound(every.x.begin(), every.x.end(), some.x[i] * (1 - 1e-12)) -
            every.x.begin());
        if (at == every.x.size()) break;  // the axis may be longer by a sample
        EXPECT_NEAR(some.y[i], every.y[at], 1e-4 * height) << name_of(settings);
      }
    }
  }
}

TEST(Live, ALongResponseIsCutOffAndSaysSo) {
  const DrawnFilter slow = drawn_live(tests::settings("butterworth", "lowpass", 2, {0.5}));
  const auto live = time_panels({slow}, {.detail = Detail::live});
  EXPECT_THAT(live.impulse.title, HasSubstr(", its first "));
  EXPECT_DOUBLE_EQ(live.impulse.time.axis.high, 32768 / slow.samplerate * 1000);
  EXPECT_EQ(time_panels({slow}).impulse.title, "Impulse response");
}

TEST(Live, TimeIsEnlargedToAnyAxis) {
  const DrawnFilter filter = drawn_live(tests::settings("butterworth", "lowpass", 4, {1000}));
  const Axis seconds{0.0002, 0.0012, Scale::linear};
  const auto whole = time_panels({filter});
  for (const Detail detail : {Detail::full, Detail::live}) {
    const auto part = impulse_panel({filter}, {.seconds = seconds, .detail = detail});
    const Curve &curve = part.curves.front(), &all = whole.impulse.curves.front();
    const auto first = static_cast<std::size_t>(std::floor(seconds.low * filter.samplerate));
    EXPECT_DOUBLE_EQ(part.time.axis.high, 1.2);
    EXPECT_EQ(curve.x.size(),
              static_cast<std::size_t>(seconds.high * filter.samplerate) - first + 1);
    EXPECT_NEAR(curve.x[5], all.x[first + 5], 1e-12);
    EXPECT_NEAR(curve.y[5], all.y[first + 5], 1e-12);
  }
  const auto beyond = step_panel({filter}, {.seconds = Axis{0.0, 5.0, Scale::linear}});
  EXPECT_EQ(beyond.title, "Step response");
  EXPECT_NEAR(beyond.curves.front().x.back(), 5.0, 1e-3);
  EXPECT_NEAR(beyond.curves.front().y.back(), 1.0, 1e-6);
}

TEST(Live, AFigureHasAllPanelsOfTheFullOne) {
  const DrawnFilter filter =
      drawn_live(tests::settings("chebyshev-2", "bandpass", 8, {1000, 2000}));
  const auto live = figure_of({filter}, {.detail = Detail::live});
  const auto full = figure_of({filter});
  EXPECT_EQ(live.level.cutoffs, full.level.cutoffs);
  EXPECT_EQ(live.level.limits, full.level.limits);
  EXPECT_EQ(live.passband.value.axis.low, full.passband.value.axis.low);
  EXPECT_NEAR(live.phase.value.axis.low, full.phase.value.axis.low, 1.0);
  EXPECT_NEAR(live.delay.value.axis.high, full.delay.value.axis.high,
              0.01 * full.delay.value.axis.high);
  EXPECT_LT(live.level.curves.front().x.size(), full.level.curves.front().x.size() / 2);
  EXPECT_EQ(live.poles.title, full.poles.title);
}

TEST(Live, AFilterWithoutSettingsIsDrawnAsTheFullOne) {
  for (const auto &settings : {tests::settings("butterworth", "lowpass", 4, {3000}),
                               tests::settings("chebyshev-2", "bandpass", 6, {1000, 2000}),
                               tests::settings("chebyshev-1", "bandstop", 6, {1000, 2000})}) {
    const auto published = designer::published_filter(tests::design(settings));
    const DrawnFilter live = drawn_without_settings(published, "the filter", Detail::live);
    const DrawnFilter full = drawn_without_settings(published, "the filter");
    EXPECT_EQ(live.response, full.response);
    ASSERT_EQ(live.half_power.size(), full.half_power.size());
    for (std::size_t i = 0; i < live.half_power.size(); ++i)
      EXPECT_NEAR(live.half_power[i], full.half_power[i], 1e-3 * full.half_power[i]);
  }
}
