// The levels that a filter reaches, against those that were asked for.

#include <cmath>
#include <complex>
#include <numbers>

#include "check_test.h"
#include "checks.h"

using designer::Settings;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using namespace verdict;

namespace {

// The level of a cascade at 48 kHz, multiplied section by section.
double level_db(const analysis::Sections &cascade, double hz) {
  const std::complex<double> x = std::polar(1.0, -2.0 * std::numbers::pi * hz / 48000.0);
  std::complex<double> response = 1.0;
  for (const auto &[b0, b1, b2, a1, a2] : cascade)
    response *= (b0 + b1 * x + b2 * x * x) / (1.0 + a1 * x + a2 * x * x);
  return 20.0 * std::log10(std::abs(response));
}

void expect_measured_as_the_sections_do(const Settings &settings) {
  const FilterUnderTest filter = designed(settings);
  const Verdict verdict = judge(filter);
  SCOPED_TRACE(verdict.title);
  EXPECT_THAT(problems(verdict), IsEmpty());
  const analysis::Sections &cascade = filter.published.sections;
  const text::Json &points = verdict.findings.measured["half_power_hz"];
  ASSERT_FALSE(points.empty());
  for (const text::Json &hz : points)
    EXPECT_NEAR(level_db(cascade, hz.get<double>()), -3.0103, 1e-4);
  EXPECT_NEAR(level_db(cascade, measured(verdict, "reference_hz")),
              measured(verdict, "reference_db"), 1e-9);
}

// A filter whose sections have another gain than they should.
Findings findings_of_louder(const Settings &settings, double db) {
  FilterUnderTest filter = designed(settings);
  const double factor = std::pow(10.0, db / 20);
  for (double *b :
       {&filter.forms.sections[0].b0, &filter.forms.sections[0].b1, &filter.forms.sections[0].b2})
    *b *= factor;
  return check_levels(filter);
}

}  // namespace

TEST(CheckLevels, MeasuresWhatTheSectionsDo) {
  for (const int ripple : {1, 6})
    expect_measured_as_the_sections_do({{"topology", {"chebyshev-1"}},
                                        {"order", {6}},
                                        {"frequency", {1000}},
                                        {"passband_ripple", {ripple}}});
  expect_measured_as_the_sections_do({{"topology", {"chebyshev-2"}},
                                      {"order", {6}},
                                      {"response", {"bandpass"}},
                                      {"frequency", {300, 3400}}});
  expect_measured_as_the_sections_do({{"topology", {"chebyshev-2"}},
                                      {"order", {5}},
                                      {"response", {"bandstop"}},
                                      {"frequency", {300, 3400}}});
  expect_measured_as_the_sections_do({{"topology", {"butterworth"}},
                                      {"order", {5}},
                                      {"response", {"highpass"}},
                                      {"frequency", {5000}}});
}

TEST(CheckLevels, EachFamilyReachesItsOwnLevels) {
  const Verdict butterworth = checked(
      {{"topology", {"butterworth"}}, {"response", {"bandpass"}}, {"frequency", {300, 3400}}});
  EXPECT_THAT(fact(butterworth, "levels"), HasSubstr("-3.01 dB at the cutoffs, as asked"));
  EXPECT_EQ(fact(butterworth, "-3 dB"), "") << "it is at the cutoffs";

  const Verdict chebyshev_1 = checked({{"topology", {"chebyshev-1"}}, {"passband_ripple", {2}}});
  EXPECT_THAT(fact(chebyshev_1, "levels"), HasSubstr("the passband lies between -2 dB and 0 dB"));
  EXPECT_NEAR(measured(chebyshev_1, "passband_lowest_db"), -2, 1e-6);
  EXPECT_NEAR(measured(chebyshev_1, "passband_highest_db"), 0, 1e-6);

  const Verdict chebyshev_2 =
      checked({{"topology", {"chebyshev-2"}}, {"stopband_attenuation", {70}}});
  EXPECT_THAT(fact(chebyshev_2, "levels"), HasSubstr("at most -70 dB in the stopband, as asked"));
  EXPECT_NEAR(measured(chebyshev_2, "stopband_highest_db"), -70, 1e-6);
  EXPECT_THAT(fact(chebyshev_2, "-3 dB"), HasSubstr(" Hz"));
}

// The ripple of an even order begins at its bottom.
TEST(CheckLevels, AnEvenChebyshev1HasItsRippleAtTheReferenceFrequency) {
  const auto order = [](int n) {
    return measured(
        checked({{"topology", {"chebyshev-1"}}, {"order", {n}}, {"passband_ripple", {2}}}),
        "reference_db");
  };
  EXPECT_NEAR(order(4), -2, 1e-6);
  EXPECT_NEAR(order(5), 0, 1e-6);
}

TEST(CheckLevels, AHundredthOfADecibelIsTheTolerance) {
  for (const char *family : {"butterworth", "chebyshev-1", "chebyshev-2"}) {
    const Settings settings{{"topology", {family}}};
    for (const double db : {0.009, -0.009})
      EXPECT_THAT(said(findings_of_louder(settings, db), "levels", Weight::fact), Not(IsEmpty()));
    for (const double db : {0.011, -0.011}) {
      const Findings findings = findings_of_louder(settings, db);
      EXPECT_THAT(said(findings, "levels", Weight::fact), IsEmpty());
      const std::string text = said(findings, "levels", Weight::problem);
      EXPECT_THAT(text, HasSubstr("the level at 0 Hz is " + std::string(db < 0 ? "-" : "") +
                                  "0.011 dB, and should be 0 dB"));
      const char *second = family == std::string("butterworth") ? "the level at 3000 Hz"
                           : family == std::string("chebyshev-1")
                               ? "the highest level of the passband"
                               : "the highest level of the stopband";
      EXPECT_THAT(text, HasSubstr(second));
    }
  }
}

// Their levels are right. What noise they make when they run is another matter.
TEST(CheckLevels, HighOrdersReachTheirs) {
  for (const Settings &settings :
       {Settings{{"topology", {"chebyshev-1"}}, {"order", {100}}, {"frequency", {2400}}},
        Settings{{"topology", {"butterworth"}},
                 {"response", {"bandstop"}},
                 {"order", {64}},
                 {"frequency", {1200, 3600}}},
        Settings{{"topology", {"chebyshev-2"}},
                 {"response", {"highpass"}},
                 {"order", {128}},
                 {"frequency", {240}},
                 {"stopband_attenuation", {240}}}}) {
    const Verdict verdict = checked(settings);
    std::set<std::string> found = problems(verdict);
    found.erase("noise");
    EXPECT_THAT(found, IsEmpty()) << verdict.title;
  }
}
