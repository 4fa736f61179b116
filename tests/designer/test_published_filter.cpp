// Designs read into types.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <numbers>

#include "../designer_with_module.h"
#include "designer/published_filter.h"

using designer::Family;
using designer::PublishedFilter;
using designer::Response;
using designer::Settings;
using designer::Units;
using designer::Values;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

PublishedFilter published(const Settings &settings) {
  return designer::published_filter(tests::designer_with_module().design(settings));
}

Values word(const char *text) { return {std::string(text)}; }

// The level of the roots at a fraction of the Nyquist frequency, in dB.
double level(const PublishedFilter &filter, double fraction) {
  const std::complex<double> z = std::polar(1.0, std::numbers::pi * fraction);
  double magnitude = std::abs(filter.roots->gain);
  for (const auto &zero : filter.roots->zeros) magnitude *= std::abs(z - zero);
  for (const auto &pole : filter.roots->poles) magnitude /= std::abs(z - pole);
  return 20.0 * std::log10(magnitude);
}

}  // namespace

TEST(PublishedFilter, HasListsOfTheRightLengths) {
  const PublishedFilter band = published(
      {{"response", word("bandpass")}, {"frequency", {300.0, 3400.0}}, {"tf_output", word("on")}});
  EXPECT_EQ(band.response, Response::bandpass);
  EXPECT_EQ(band.family, Family::chebyshev_2);
  EXPECT_EQ(band.order, 5U);
  EXPECT_EQ(band.units, Units::hertz);
  EXPECT_EQ(band.samplerate, 48000.0);
  EXPECT_TRUE(band.samplerate_assumed);
  EXPECT_THAT(band.roots->poles, SizeIs(10));
  EXPECT_THAT(band.roots->zeros, SizeIs(10));
  EXPECT_THAT(band.sections, SizeIs(5));
  EXPECT_THAT(band.transfer.numerator, SizeIs(11));
  EXPECT_THAT(band.transfer.denominator, SizeIs(11));
  EXPECT_EQ(band.transfer.denominator.front(), 1.0);
  const PublishedFilter none =
      published({{"zpk_output", word("off")}, {"sos_output", word("off")}});
  EXPECT_FALSE(none.roots.has_value());
  EXPECT_THAT(none.sections, IsEmpty());
  EXPECT_THAT(none.transfer.numerator, IsEmpty());
  EXPECT_FALSE(designer::roots_of(none).has_value());
}

TEST(PublishedFilter, HoldsTheSettingsAsTheBoxHasThem) {
  const PublishedFilter filter = published({{"topology", word("chebyshev-1")},
                                            {"passband_ripple", {0.01}},
                                            {"order", {t_long{500}}},
                                            {"samplerate", {t_long{44100}}},
                                            {"units", word("normalized")},
                                            {"frequency", {0.25}}});
  EXPECT_EQ(filter.passband_ripple, 0.1);
  EXPECT_EQ(filter.order, 200U);
  EXPECT_EQ(filter.samplerate, 44100.0);
  EXPECT_FALSE(filter.samplerate_assumed);
  EXPECT_EQ(filter.units, Units::normalized);
  EXPECT_EQ(filter.nyquist(), 22050.0);
  EXPECT_EQ(filter.hz_text(0.5), "11025 Hz");
}

TEST(PublishedFilter, SectionsAreTheRoots) {
  const PublishedFilter filter = published(
      {{"topology", word("butterworth")}, {"order", {t_long{6}}}, {"frequency", {5000.0}}});
  const std::complex<double> z = std::polar(1.0, 1.0);
  std::complex<double> sections = 1.0;
  for (const auto &[b0, b1, b2, a1, a2] : filter.sections)
    sections *= (b0 + b1 / z + b2 / (z * z)) / (1.0 + a1 / z + a2 / (z * z));
  std::complex<double> roots = filter.roots->gain;
  for (const auto &zero : filter.roots->zeros) roots *= z - zero;
  for (const auto &pole : filter.roots->poles) roots /= z - pole;
  EXPECT_NEAR(std::abs(sections / roots - 1.0), 0.0, 1e-12);
}

// A butterworth shows its cutoffs: there it is 3.01 dB down.
TEST(PublishedFilter, UsedCutoffsAreThoseOfTheFilter) {
  const Values highpass = word("highpass"), bandpass = word("bandpass"),
               bandstop = word("bandstop"), normalized = word("normalized");
  const Settings cases[] = {
      {{"frequency", {1000.0}}},
      {{"frequency", {1000.0}}, {"samplerate", {t_long{8000}}}},
      {{"frequency", {1000.0, 2000.0}}},
      {{"response", highpass}, {"frequency", {1000.0}}},
      {{"response", bandpass}, {"frequency", {1000.0, 2000.0}}},
      {{"response", bandstop}, {"frequency", {0.2, 0.5}}, {"units", normalized}},
      {{"frequency", {0.3}}, {"units", normalized}},
      {{"frequency", {90000.0}}},
      {{"frequency", {90000.0}}, {"response", highpass}},
      {{"frequency", {0.0}}},
      {{"frequency", {-5.0}}, {"units", normalized}, {"response", highpass}}};
  for (Settings settings : cases) {
    settings.set("topology", word("butterworth"));
    settings.set("order", {t_long{2}});
    const PublishedFilter filter = published(settings);
    EXPECT_THAT(filter.cutoffs, SizeIs(filter.has_two_cutoffs() ? 2 : 1));
    for (const double cutoff : filter.cutoffs)
      EXPECT_NEAR(level(filter, cutoff), 10.0 * std::log10(0.5), 1e-3)
          << designer::name_of(filter.response) << ' ' << cutoff;
  }
}

TEST(PublishedFilter, HasABandOnlyBetweenAscendingCutoffs) {
  const auto band = [](double low, double high) {
    return published({{"response", word("bandpass")}, {"frequency", {low, high}}});
  };
  EXPECT_FALSE(band(1000, 2000).has_no_band());
  EXPECT_TRUE(band(2000, 1000).has_no_band());
  EXPECT_TRUE(band(1000, 1000).has_no_band());
  EXPECT_EQ(band(2400, 1200).ascending_cutoffs(), (std::vector<double>{0.05, 0.1}));
}

TEST(PublishedFilter, TakesRootsFromTheSectionsWhereNoneArePublished) {
  PublishedFilter filter = published({{"topology", word("butterworth")}, {"order", {t_long{3}}}});
  const auto poles = filter.roots->poles;
  filter.roots.reset();
  const auto found = designer::roots_of(filter);
  ASSERT_TRUE(found.has_value());
  EXPECT_THAT(found->poles, SizeIs(poles.size()));
}
