// Whether a filter works at all.

#include <cmath>
#include <limits>

#include "check_test.h"
#include "checks.h"
#include "health.h"

using testing::HasSubstr;
using testing::StartsWith;
using namespace verdict;

namespace {

FilterUnderTest filter_with(double gain, double a1) {
  FilterUnderTest filter{};
  filter.forms.sections = {{gain, 0.0, 0.0, a1, 0.0}};
  filter.forms.roots = {{0.0}, {-a1}, gain};
  filter.published.samplerate = 48000.0;
  return filter;
}

}  // namespace

TEST(CheckHealth, RingingFollowsFromTheOutermostPole) {
  const FilterUnderTest filter = designed({{"order", {8}}, {"samplerate", {96000}}});
  double radius = 0.0;
  for (const analysis::Complex &pole : filter.published.roots.value().poles)
    radius = std::max(radius, std::abs(pole));
  const Verdict verdict = judge(filter);
  EXPECT_NEAR(measured(verdict, "margin"), 1 - radius, 1e-15);
  const double samples = measured(verdict, "ringing_samples");
  EXPECT_NEAR(std::pow(radius, samples), 1e-3, 1e-9);
  EXPECT_NEAR(measured(verdict, "ringing_ms"), samples / 96, 1e-9);
}

TEST(CheckHealth, LongRingingIsSaidInMinutes) {
  const std::string text = said(check_health(filter_with(1.0, -0.999999)), "ringing", Weight::fact);
  EXPECT_THAT(text, HasSubstr("6907752 samples, 2.4 min"));
}

// A pole on the circle never falls silent.
TEST(CheckHealth, APoleOnTheCircleOrOutsideIsAProblem) {
  for (const double pole : {1.0, 1.25}) {
    const Findings findings = check_health(filter_with(1.0, -pole));
    EXPECT_THAT(said(findings, "stability", Weight::problem),
                StartsWith(pole == 1.0 ? "not stable: a pole is on the unit circle"
                                       : "unstable: a pole is 0.25 outside"));
    EXPECT_EQ(findings.measured["stable"], false);
    EXPECT_EQ(findings.measured["margin"], 1.0 - pole);
    EXPECT_FALSE(findings.measured.contains("ringing_ms"));
  }
}

TEST(CheckHealth, TheWorseOfRootsAndSectionsCounts) {
  FilterUnderTest roots_unstable = filter_with(1.0, -0.5);
  roots_unstable.forms.roots.poles = {1.25};
  FilterUnderTest sections_unstable = filter_with(1.0, -0.5);
  sections_unstable.forms.sections[0].a1 = -1.25;
  for (const FilterUnderTest &filter : {roots_unstable, sections_unstable}) {
    EXPECT_EQ(check_health(filter).measured["margin"], -0.25);
    EXPECT_FALSE(has_levels(filter));
  }
}

TEST(CheckHealth, ReversedCutoffsMakeAFilterUnstable) {
  const Verdict verdict = checked(
      {{"topology", {"butterworth"}}, {"response", {"bandpass"}}, {"frequency", {3400, 300}}});
  EXPECT_LT(measured(verdict, "margin"), 0);
  EXPECT_EQ(verdict.findings.measured["stable"], false);
}

// A gain below the normal doubles has fewer digits than they.
TEST(CheckHealth, AGainBelowTheNormalDoublesIsAProblem) {
  const auto problem_with = [](double gain) {
    return said(check_health(filter_with(gain, -0.5)), "gain", Weight::problem);
  };
  const double least = std::numeric_limits<double>::min();
  EXPECT_EQ(problem_with(least), "");
  EXPECT_EQ(problem_with(-least), "");
  EXPECT_THAT(problem_with(least / 2), HasSubstr("so small that it has lost digits"));
  EXPECT_THAT(problem_with(0.0), HasSubstr("the filter is silent"));
}

TEST(CheckHealth, ADesignWithAGainTooSmallForANumberIsSilent) {
  const auto order = [](int n) {
    return checked({{"topology", {"butterworth"}}, {"order", {n}}, {"frequency", {24}}});
  };
  const Verdict silent = order(200);
  EXPECT_EQ(problems(silent), std::set<std::string>{"gain"});
  EXPECT_THAT(problem(silent, "gain"), HasSubstr("silent"));
  EXPECT_EQ(problems(order(50)), std::set<std::string>{});
}

TEST(CheckHealth, ANumberThatIsNotFiniteIsAProblem) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinity = std::numeric_limits<double>::infinity();
  FilterUnderTest zero = filter_with(1.0, -0.5);
  zero.forms.roots.zeros = {{0.0, nan}};
  FilterUnderTest pole = filter_with(1.0, -0.5);
  pole.forms.roots.poles = {infinity};
  FilterUnderTest gain = filter_with(1.0, -0.5);
  gain.forms.roots.gain = nan;
  FilterUnderTest section = filter_with(1.0, -0.5);
  section.forms.sections[0].a2 = -infinity;
  for (const FilterUnderTest &filter : {zero, pole, gain, section}) {
    const Findings findings = check_health(filter);
    ASSERT_EQ(findings.list.size(), 1U);
    EXPECT_EQ(findings.list[0].about, "numbers");
    EXPECT_EQ(findings.measured, (text::Json{{"finite", false}}));
    EXPECT_FALSE(has_levels(filter));
  }
}

TEST(CheckHealth, OnlyAFilterThatWorksAndHasABandHasLevels) {
  EXPECT_TRUE(has_levels(filter_with(1.0, -0.5)));
  EXPECT_TRUE(has_levels(filter_with(std::numeric_limits<double>::min() / 2, -0.5)));
  EXPECT_FALSE(has_levels(filter_with(0.0, -0.5)));
  FilterUnderTest no_band = filter_with(1.0, -0.5);
  no_band.published.response = designer::Response::bandpass;
  no_band.published.cutoffs = {0.5, 0.5};
  EXPECT_FALSE(has_levels(no_band));
}

TEST(CheckHealth, FeedbackOfTheOtherSignIsRecognised) {
  const analysis::Sections right{{1, 2, 1, -1.8, 0.9}, {1, 0, -1, -1.2, 0.5}};
  EXPECT_EQ(problem(checked_sections(right), "stability"), "");
  analysis::Sections turned = right;
  for (analysis::Section &section : turned) {
    section.a1 = -section.a1;
    section.a2 = -section.a2;
  }
  EXPECT_THAT(problem(checked_sections(turned), "stability"), HasSubstr("the signs of a1 and a2"));
  turned[0].a2 = 1.5;
  EXPECT_THAT(problem(checked_sections(turned), "stability"), HasSubstr("more digits"));
}

TEST(CheckHealth, APoleOnTheCircleToTheLastDigitDoesNotGrow) {
  for (const double a1 : {-1.9, -1.5, -0.3, 0.7})
    EXPECT_THAT(problem(checked_sections({{1, 0, 0, a1, 1}}), "stability"),
                HasSubstr("a pole is on the unit circle"))
        << a1;
  EXPECT_THAT(problem(checked_sections({{1, 0, 0, -1.5, 1 + 2e-15}}), "stability"),
              HasSubstr("outside the unit circle"));
}

TEST(CheckHealth, WithoutFeedbackThereIsNoPole) {
  EXPECT_THAT(fact(checked_sections({{1, 2, 1, 0, 0}}), "stability"),
              HasSubstr("no pole but at 0"));
}
