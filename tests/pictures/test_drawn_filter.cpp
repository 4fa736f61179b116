// A filter as pictures draw it, and which cannot be drawn.

#include <gmock/gmock.h>

#include <limits>

#include "designed.h"
#include "designer/refusal.h"
#include "pictures/ranges.h"

using pictures::DrawnFilter;
using pictures::Scale;
using pictures::whole_axis;
using testing::DoubleEq;
using testing::ElementsAre;
using testing::SizeIs;
using tests::drawn;
using tests::half_power_level;
using tests::level_at;

namespace {

/** A filter with two poles, as it would have been published. */
designer::PublishedFilter resonator() {
  designer::PublishedFilter filter{};
  filter.response = designer::Response::lowpass;
  filter.family = designer::Family::butterworth;
  filter.samplerate = 48000.0;
  filter.cutoffs = {0.25};
  filter.roots = analysis::Roots{{-1.0, -1.0}, {{0.5, 0.5}, {0.5, -0.5}}, 0.1};
  return filter;
}

std::string refusal(const designer::PublishedFilter &filter) {
  try {
    pictures::drawn_filter(filter, "the filter");
    return "";
  } catch (const designer::Refusal &refused) {
    return refused.what();
  }
}

}  // namespace

TEST(DrawnFilter, TheCutoffOfAChebyshev2IsItsStopbandsEdge) {
  const DrawnFilter filter = drawn("chebyshev-2", "highpass", 6, {2000});
  EXPECT_EQ(filter.attenuation, 96.0);
  EXPECT_EQ(filter.ripple, std::nullopt);
  EXPECT_NEAR(level_at(filter, 2000), -96.0, 1e-6);
  ASSERT_THAT(filter.half_power, SizeIs(1));
  EXPECT_NEAR(level_at(filter, filter.half_power[0]), half_power_level, 1e-6);
  EXPECT_GT(filter.half_power[0], 2000);
}

TEST(DrawnFilter, RippleAndAttenuationAreThoseThatTheFamilyUses) {
  EXPECT_EQ(drawn("chebyshev-1", "lowpass", 3, {2000}).ripple, 0.5);
  EXPECT_EQ(drawn("chebyshev-1", "lowpass", 3, {2000}).attenuation, std::nullopt);
  EXPECT_EQ(drawn("butterworth", "lowpass", 3, {2000}).ripple, std::nullopt);
  EXPECT_EQ(drawn("butterworth", "lowpass", 3, {2000}).attenuation, std::nullopt);
}

TEST(DrawnFilter, ASilentOneShowsItsShape) {
  const DrawnFilter filter = drawn("butterworth", "lowpass", 200, {20});
  EXPECT_TRUE(filter.is_silent());
  EXPECT_NEAR(filter.peak_db, 0.0, 1e-6);
  EXPECT_NEAR(level_at(filter, 20), half_power_level, 1e-3);
  ASSERT_THAT(filter.half_power, SizeIs(1));
  EXPECT_NEAR(filter.half_power[0], 20, 1e-3);
  EXPECT_FALSE(drawn("butterworth", "lowpass", 20, {20}).is_silent());
}

TEST(DrawnFilter, PolesOutsideTheCircleAreCounted) {
  EXPECT_EQ(drawn("butterworth", "bandpass", 3, {3000, 1000}).poles_outside, 6U);
  EXPECT_TRUE(drawn("butterworth", "bandpass", 3, {3000, 1000}).is_unstable());
  EXPECT_EQ(drawn("butterworth", "bandpass", 3, {1000, 3000}).poles_outside, 0U);
}

TEST(DrawnFilter, CutoffsAscendAndAreInHertzWhateverTheUnit) {
  designer::Settings normalized = tests::settings("butterworth", "bandpass", 2, {0.5, 0.25});
  normalized.set("units", {std::string("normalized")});
  normalized.set("samplerate", {t_long{44100}});
  const DrawnFilter filter = drawn(normalized);
  EXPECT_THAT(filter.cutoffs, ElementsAre(DoubleEq(0.25 * 22050), DoubleEq(0.5 * 22050)));
  EXPECT_EQ(whole_axis({filter}, Scale::logarithmic).high, 22050.0);
}

TEST(DrawnFilter, EqualCutoffsHaveNoHalfPowerPoints) {
  designer::PublishedFilter filter = resonator();
  filter.response = designer::Response::bandpass;
  filter.cutoffs = {0.25, 0.25};
  EXPECT_THAT(pictures::drawn_filter(filter, "the filter").half_power, SizeIs(0));
  filter.cutoffs = {0.2, 0.3};
  EXPECT_THAT(pictures::drawn_filter(filter, "the filter").half_power, SizeIs(testing::Ge(1U)));
}

TEST(DrawnFilter, SectionsAloneAreEnough) {
  designer::PublishedFilter published = designer::published_filter(
      tests::design(tests::settings("butterworth", "lowpass", 5, {3000})));
  const DrawnFilter all = pictures::drawn_filter(published, "the filter");
  published.roots.reset();
  const DrawnFilter filter = pictures::drawn_filter(published, "the filter");
  EXPECT_THAT(filter.roots.poles, SizeIs(5));
  EXPECT_EQ(level_at(filter, 5000), level_at(all, 5000));
}

TEST(DrawnFilter, WithoutSectionsTheLevelComesFromTheRoots) {
  const DrawnFilter all = drawn("chebyshev-1", "bandpass", 5, {300, 3400});
  DrawnFilter filter = all;
  filter.sections.clear();
  for (const double hz : {10.0, 300.0, 1000.0, 3400.0, 20000.0})
    EXPECT_NEAR(level_at(filter, hz), level_at(all, hz), 1e-9) << hz;
}

TEST(DrawnFilter, WhatHasNoResponseIsRefused) {
  EXPECT_EQ(refusal(resonator()), "");
  designer::PublishedFilter empty = resonator();
  empty.roots.reset();
  EXPECT_EQ(refusal(empty),
            "the filter has neither zeros and poles nor sections to draw; design it with "
            "--zpk-output on");
  designer::PublishedFilter endless = resonator();
  endless.roots->zeros[0] = std::numeric_limits<double>::infinity();
  EXPECT_EQ(refusal(endless), "the filter has numbers that are not finite: it has no response");
  designer::PublishedFilter nan_section = resonator();
  nan_section.sections = {{1.0, 0.0, 0.0, 0.0, std::numeric_limits<double>::quiet_NaN()}};
  EXPECT_EQ(refusal(nan_section), "the filter has numbers that are not finite: it has no response");
  designer::PublishedFilter ringing = resonator();
  ringing.roots->poles = {{0.6, 0.8}, {0.6, -0.8}};
  EXPECT_EQ(refusal(ringing), "the filter has a pole on the unit circle: it has no response");
}

TEST(DrawnFilter, WithoutSettingsItsLevelsSayWhatItIs) {
  for (const designer::Response response :
       {designer::Response::lowpass, designer::Response::highpass, designer::Response::bandpass,
        designer::Response::bandstop}) {
    const bool band = analysis::has_two_edges(response);
    const auto published = designer::published_filter(tests::design(
        tests::settings("butterworth", std::string(designer::name_of(response)), 3,
                        band ? std::vector<double>{1000, 2000} : std::vector<double>{1000})));
    const DrawnFilter known = pictures::drawn_filter(published, "the filter");
    const DrawnFilter found = pictures::drawn_without_settings(published, "the filter");
    EXPECT_EQ(found.response, response);
    EXPECT_THAT(found.cutoffs, SizeIs(0));
    EXPECT_THAT(found.half_power, testing::Pointwise(testing::DoubleNear(1e-6), known.half_power));
  }
}

TEST(DrawnFilter, AGainAloneIsRefused) {
  designer::FilterForms forms{};
  forms.samplerate = 48000.0;
  forms.sections = {{3.5, 0, 0, 0, 0}};
  try {
    pictures::drawn_without_settings(forms, "the filter");
    ADD_FAILURE();
  } catch (const designer::Refusal &refused) {
    EXPECT_STREQ(refused.what(), "the filter only multiplies by 3.5: it has no response to draw");
  }
}

TEST(DrawnFilter, AnAllpassHasNoHalfPower) {
  designer::FilterForms forms{};
  forms.samplerate = 48000.0;
  forms.sections = {{0.5, -1.2, 1.0, -1.2, 0.5}};
  const DrawnFilter filter = pictures::drawn_without_settings(forms, "the filter");
  EXPECT_THAT(filter.half_power, SizeIs(0));
  EXPECT_NEAR(level_at(filter, 5000), 0.0, 1e-9);
}
