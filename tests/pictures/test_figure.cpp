// Whole figures: the key, names, titles and warnings.

#include <gmock/gmock.h>

#include "designed.h"
#include "pictures/figure.h"
#include "pictures/filter_names.h"
#include "pictures/warnings.h"

using pictures::Axis;
using pictures::DrawnFilter;
using pictures::Figure;
using pictures::figure_key;
using pictures::figure_of;
using pictures::Scale;
using pictures::warnings;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using tests::drawn;

TEST(Figure, OfOneFilterIsTitledByItsSettings) {
  const Figure figure = figure_of({drawn("butterworth", "lowpass", 4, {1000})});
  EXPECT_EQ(figure.title, "butterworth lowpass of order 4, cutoff 1000 Hz, at 48000 Hz");
  EXPECT_THAT(figure.key.names, IsEmpty());
  EXPECT_EQ(figure.filter_count(), 1U);
  EXPECT_EQ(figure.level.value.axis.low, -120.0);
  EXPECT_EQ(figure.level.frequency.axis.high, 24000.0);
}

TEST(Figure, OfSeveralNamesThemInItsKey) {
  const Figure figure = figure_of(
      {drawn("butterworth", "lowpass", 4, {1000}), drawn("butterworth", "lowpass", 5, {1000})});
  EXPECT_EQ(figure.title, "2 filters");
  EXPECT_THAT(figure.key.names,
              ElementsAre("1  butterworth lowpass of order 4, cutoff 1000 Hz, at 48000 Hz",
                          "2  butterworth lowpass of order 5, cutoff 1000 Hz, at 48000 Hz"));
  EXPECT_EQ(figure.filter_count(), 2U);
}

TEST(Figure, FollowsItsOptions) {
  const Figure figure =
      figure_of({drawn("butterworth", "lowpass", 4, {1000})},
                {.title = "my own", .frequencies = Axis{50.0, 60.0}, .floor_db = -33.0});
  EXPECT_EQ(figure.title, "my own");
  EXPECT_EQ(figure.level.frequency.axis.low, 50.0);
  EXPECT_EQ(figure.level.curves.front().x.back(), 60.0);
  EXPECT_EQ(figure.level.value.axis.low, -33.0);
}

TEST(Figure, PanelsOverFrequencyFollowOneRange) {
  const Figure figure = figure_of({drawn("butterworth", "bandpass", 4, {1000, 2000})},
                                  {.frequencies = Axis{500.0, 6000.0, Scale::logarithmic}});
  for (const auto *panel : {&figure.level, &figure.phase, &figure.delay}) {
    EXPECT_EQ(panel->frequency.axis.low, 500.0);
    EXPECT_EQ(panel->frequency.axis.high, 6000.0);
    EXPECT_TRUE(panel->frequency.axis.is_logarithmic());
    EXPECT_NEAR(panel->curves.front().x.front(), 500.0, 1e-9);
    EXPECT_NEAR(panel->curves.front().x.back(), 6000.0, 1e-9);
  }
  EXPECT_NEAR(figure.passband.frequency.axis.low, 750.0, 1e-6);
  EXPECT_NEAR(figure.passband.frequency.axis.high, 2250.0, 1e-6);
}

TEST(Figure, ThePassbandStaysWithinTheRange) {
  const DrawnFilter filter = drawn("butterworth", "bandpass", 4, {1000, 2000});
  const auto passband = [&](const Axis &range) {
    return figure_of({filter}, {.frequencies = range}).passband.frequency.axis;
  };
  EXPECT_EQ(passband({1500.0, 6000.0, Scale::logarithmic}).low, 1500.0);
  EXPECT_NEAR(passband({1500.0, 6000.0, Scale::logarithmic}).high, 2250.0, 1e-6);
  const Axis within{1500.0, 1600.0, Scale::logarithmic};
  EXPECT_EQ(passband(within).low, 1500.0);
  EXPECT_EQ(passband(within).high, 1600.0);
  EXPECT_TRUE(passband(within).is_logarithmic());
  EXPECT_NEAR(passband({5000.0, 6000.0, Scale::logarithmic}).low, 750.0, 1e-6);
}

TEST(Figure, MayBeLinearThroughout) {
  const Figure figure =
      figure_of({drawn("butterworth", "bandpass", 4, {20, 20000})}, {.scale = Scale::linear});
  for (const auto *panel : {&figure.level, &figure.passband, &figure.phase, &figure.delay})
    EXPECT_FALSE(panel->frequency.axis.is_logarithmic());
  EXPECT_EQ(figure.level.frequency.axis.low, 0.0);
}

TEST(FigureKey, OfOneFilterSaysWhereItsMarksAre) {
  const auto key = figure_key({drawn("butterworth", "bandpass", 2, {1000, 3000})});
  EXPECT_EQ(key.cutoffs, "cutoffs 1000 and 3000 Hz");
  EXPECT_EQ(key.half_power, "\u22123 dB at 1000 and 3000 Hz");
  EXPECT_EQ(key.limits, "");
  DrawnFilter without = drawn("butterworth", "bandpass", 2, {1000, 3000});
  without.half_power.clear();
  EXPECT_EQ(figure_key({without}).half_power, "");
}

TEST(FigureKey, CallsCutoffsWhatTheyAreInTheFamily) {
  const auto one = figure_key({drawn("chebyshev-1", "lowpass", 3, {3000})});
  EXPECT_EQ(one.cutoffs, "passband edge 3000 Hz");
  EXPECT_EQ(one.limits, "ripple asked for: 0.5 dB");
  const auto two = figure_key({drawn("chebyshev-2", "bandstop", 3, {3000, 5000})});
  EXPECT_EQ(two.cutoffs, "stopband edges 3000 and 5000 Hz");
  EXPECT_EQ(two.limits, "attenuation asked for: 96 dB");
}

TEST(FigureKey, OfSeveralSaysWhatTheMarksAre) {
  const DrawnFilter plain = drawn("butterworth", "lowpass", 3, {3000});
  EXPECT_EQ(figure_key({plain, plain}).cutoffs, "cutoffs");
  EXPECT_EQ(figure_key({plain, plain}).half_power,
            "symbols on the curves: \u22123 dB from the peak");
  EXPECT_EQ(figure_key({plain, plain}).limits, "");
  EXPECT_EQ(figure_key({plain, drawn("chebyshev-1", "lowpass", 3, {3000})}).limits,
            "ripple and attenuation asked for");
}

TEST(FilterNames, LongOnesLoseTheirMiddle) {
  EXPECT_EQ(pictures::saved_filter_name("a.json", "a title"), "a.json: a title");
  EXPECT_EQ(pictures::saved_filter_name(std::string(20, 'a') + std::string(20, 'b'), "c"),
            std::string(14, 'a') + "\u2026" + std::string(14, 'b') + ": c");
  EXPECT_EQ(pictures::figure_title(std::string(200, 'x')),
            std::string(55, 'x') + "\u2026" + std::string(55, 'x'));
  EXPECT_EQ(pictures::numbered_name(3, std::string(200, 'x')),
            "3  " + std::string(68, 'x') + "\u2026" + std::string(68, 'x'));
}

TEST(FilterNames, AreFitToBeShown) {
  EXPECT_EQ(pictures::figure_title("a\nb\x1b[2J"), "a\\x0ab\\x1b[2J");
  EXPECT_EQ(pictures::saved_filter_name("a\rb", "c"), "a\\x0db: c");
}

TEST(Warnings, SayWhatThePictureCannot) {
  EXPECT_THAT(warnings(drawn("butterworth", "lowpass", 3, {3000}), "the filter"), IsEmpty());
  EXPECT_THAT(warnings(drawn("butterworth", "lowpass", 200, {20}), "'a.json'"),
              ElementsAre("'a.json' is silent: its gain is too small for a double; "
                          "its level is drawn without the gain, with the peak at 0 dB"));
  EXPECT_THAT(warnings(drawn("butterworth", "bandpass", 3, {3000, 1000}), "the filter"),
              ElementsAre("the filter is unstable: 6 of its poles lie outside the unit circle"));
}

TEST(Figure, WithoutSettingsHasNoCutoffsInItsKey) {
  designer::FilterForms forms{};
  forms.samplerate = 48000.0;
  forms.sections = {{0.5, -1.2, 1.0, -1.2, 0.5}};
  const Figure allpass = figure_of({pictures::drawn_without_settings(forms, "the filter")});
  EXPECT_EQ(allpass.key.cutoffs, "");
  EXPECT_EQ(allpass.key.half_power, "");
  EXPECT_EQ(allpass.level.frequency.axis.high, 24000.0);
  EXPECT_GT(allpass.level.frequency.axis.low, 0.0);
  forms.sections = {{0.25, 0.5, 0.25, 0.0, 0.0}};
  const Figure lowpass = figure_of({pictures::drawn_without_settings(forms, "the filter")});
  EXPECT_EQ(lowpass.key.cutoffs, "");
  EXPECT_THAT(lowpass.key.half_power, testing::HasSubstr("at 8737.4 Hz"));
}
