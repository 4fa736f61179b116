// The panels over time: what is drawn, and for how long.

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "analysis/impulse.h"
#include "designed.h"
#include "pictures/time_panels.h"

using pictures::Curve;
using pictures::DrawnFilter;
using pictures::time_panels;
using pictures::TimePanels;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using tests::drawn;

namespace {

double extent(const Curve &curve) {
  double most = 0.0;
  for (const double y : curve.y) most = std::max(most, std::fabs(y));
  return most;
}

// By which the amplitudes are multiplied.
double scale_of(const pictures::TimePanel &panel) {
  const std::vector<std::string> powers{"\u00b9", "\u00b2", "\u00b3", "\u2074", "\u2075"};
  for (std::size_t i = 0; i < powers.size(); ++i)
    if (panel.amplitude.label == "amplitude \u00b7 10" + powers[i])
      return std::pow(10.0, static_cast<double>(i + 1));
  EXPECT_EQ(panel.amplitude.label, "amplitude");
  return 1.0;
}

}  // namespace

// H = 0.2928932188134525 (1 + z^-1)^2 / (1 + 0.1715728752538099 z^-2), a butterworth of order 2 at
// a quarter of the sample rate.
TEST(TimePanels, ShowTheRecursion) {
  const TimePanels panels = time_panels({drawn("butterworth", "lowpass", 2, {12000})});
  const double b = 1.0 - std::sqrt(0.5), a = 3.0 - 2.0 * std::sqrt(2.0);
  const std::vector<double> impulse{b, 2.0 * b, b - a * b, -2.0 * a * b};
  double sum = 0.0;
  for (std::size_t i = 0; i < impulse.size(); ++i) {
    sum += impulse[i];
    EXPECT_NEAR(panels.impulse.curves.at(0).y.at(i), impulse[i], 1e-14);
    EXPECT_NEAR(panels.step.curves.at(0).y.at(i), sum, 1e-14);
    EXPECT_NEAR(panels.impulse.curves.at(0).x.at(i), static_cast<double>(i) / 0.048, 1e-9);
  }
  EXPECT_EQ(panels.impulse.time.label, "time in \u00b5s");
  EXPECT_EQ(panels.impulse.title, "Impulse response");
  EXPECT_EQ(panels.step.title, "Step response");
  EXPECT_TRUE(panels.impulse.shows_samples);
}

// The envelope of a resonance falls by 0.5 % after 5.3 time constants; and neither much later.
TEST(TimePanels, LastUntilTheFilterHasRungOut) {
  for (const char *topology : {"butterworth", "chebyshev-1", "chebyshev-2"})
    for (const char *response : {"lowpass", "highpass", "bandpass", "bandstop"})
      for (const t_long order : {2, 9, 40}) {
        const bool band = std::string(response).starts_with("band");
        const DrawnFilter filter =
            drawn(topology, response, order,
                  band ? std::vector<double>{1000, 1200} : std::vector<double>{1000});
        const TimePanels panels = time_panels({filter});
        for (const auto *panel : {&panels.impulse, &panels.step}) {
          const std::vector<double> &y = panel->curves.at(0).y;
          const double most = extent(panel->curves.at(0));
          const double end = panel == &panels.step
                                 ? scale_of(*panel) * std::pow(10.0, filter.level_db(0) / 20)
                                 : 0.0;
          const std::size_t tail = y.size() - y.size() / 12;
          for (std::size_t i = tail; i < y.size(); ++i)
            EXPECT_NEAR(y[i], end, 0.006 * most) << topology << ' ' << response << ' ' << order;
          if (y.size() <= 17) continue;
          double before = 0.0;
          for (std::size_t i = y.size() / 2; i < y.size(); ++i)
            before = std::max(before, std::fabs(y[i] - end));
          EXPECT_GT(before, 0.004 * most) << topology << ' ' << response << ' ' << order;
        }
      }
}

// An impulse hardly moves the poles at 20 Hz, and a step shows what they do.
TEST(TimePanels, EachHasItsOwnLength) {
  const TimePanels panels = time_panels({drawn("butterworth", "bandpass", 8, {20, 20000})});
  EXPECT_LT(panels.impulse.curves.at(0).y.size(), 200U);
  EXPECT_GT(panels.step.curves.at(0).y.size(), 5000U);
}

// Run as they are published, these sections end with noise far above the filter's own output.
TEST(TimePanels, ShowTheFilterAndNotItsRounding) {
  const DrawnFilter filter = drawn("butterworth", "bandpass", 20, {20, 20000});
  const std::vector<double> published = analysis::step_response(filter.sections, 20000);
  ASSERT_GT(std::fabs(*std::max_element(published.begin(), published.end())), 10.0);
  EXPECT_LT(extent(time_panels({filter}).step.curves.at(0)), 2.0);
}

TEST(TimePanels, FiltersShareAnAxis) {
  designer::Settings slower = tests::settings("butterworth", "lowpass", 2, {100});
  slower.set("samplerate", {t_long{8000}});
  const TimePanels panels =
      time_panels({drawn("butterworth", "lowpass", 2, {5000}), drawn(slower)});
  ASSERT_THAT(panels.step.curves, SizeIs(2));
  const Curve &fast = panels.step.curves[0], &slow = panels.step.curves[1];
  EXPECT_NEAR(fast.x.back(), panels.step.time.axis.high, 0.03);
  EXPECT_NEAR(slow.x.back(), panels.step.time.axis.high, 0.13);
  EXPECT_NEAR(fast.y.back(), 1.0, 1e-6);
  EXPECT_EQ(panels.step.time.label, "time in ms");
  EXPECT_FALSE(panels.step.shows_samples);
}

TEST(TimePanels, SayWhichFiltersHaveNone) {
  const DrawnFilter silent = drawn("butterworth", "lowpass", 200, {20});
  DrawnFilter bare = drawn("butterworth", "lowpass", 2, {2000});
  const DrawnFilter sound = bare;
  bare.sections.clear();
  EXPECT_EQ(time_panels({silent}).step.title, "Step response: none, the filter is silent");
  EXPECT_THAT(time_panels({silent}).step.curves.at(0).x, IsEmpty());
  EXPECT_EQ(time_panels({bare}).impulse.title, "Impulse response: none without sections");
  const TimePanels three = time_panels({silent, sound, bare});
  EXPECT_EQ(three.impulse.title, "Impulse response; none of 1, 3");
  EXPECT_FALSE(three.impulse.curves.at(1).x.empty());
}

TEST(TimePanels, AnUnstableFilterGrowsByAThousand) {
  const TimePanels panels = time_panels({drawn("butterworth", "bandpass", 1, {3000, 1000})});
  const Curve &curve = panels.impulse.curves.at(0);
  EXPECT_GT(extent(curve), 100.0 * std::fabs(curve.y.front()));
  EXPECT_TRUE(std::isfinite(extent(curve)));
}

// The largest of its samples is 0.0000999.
TEST(TimePanels, SmallAmplitudesAreCountedInPowersOfTen) {
  const TimePanels panels = time_panels({drawn("butterworth", "bandpass", 4, {59, 61})});
  EXPECT_EQ(panels.impulse.amplitude.label, "amplitude \u00b7 10\u2075");
  EXPECT_NEAR(extent(panels.impulse.curves.at(0)), 10.0, 0.1);
  EXPECT_EQ(panels.step.amplitude.label, "amplitude \u00b7 10\u00b2");
  const TimePanels usual = time_panels({drawn("butterworth", "lowpass", 4, {3000})});
  EXPECT_EQ(usual.impulse.amplitude.label, "amplitude");
}

TEST(TimePanels, WhatTakesTooLongIsCutAndSaysSo) {
  const TimePanels panels = time_panels({drawn("butterworth", "bandpass", 2, {20, 20.01})});
  EXPECT_THAT(panels.impulse.title, HasSubstr("Impulse response, its first 41.7 s"));
  EXPECT_EQ(panels.impulse.curves.at(0).y.size(), 2000000U);
}
