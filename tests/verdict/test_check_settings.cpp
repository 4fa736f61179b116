// What the settings of a filter mean, and what became of those that were asked for.

#include "check_test.h"

using designer::Settings;
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using namespace verdict;

TEST(CheckSettings, ABandHasTwiceThePoles) {
  const Verdict band =
      checked({{"response", {"bandstop"}}, {"frequency", {300, 3400}}, {"order", {7}}});
  EXPECT_EQ(measured(band, "poles"), 14);
  EXPECT_EQ(measured(band, "sections"), 7);
  EXPECT_THAT(fact(band, "order"), HasSubstr("the bandstop has twice as many poles: 14"));
  EXPECT_EQ(measured(checked({{"order", {7}}}), "poles"), 7);
}

TEST(CheckSettings, TheSampleRateIsAssumedUnlessItIsSet) {
  const Verdict assumed = checked({});
  EXPECT_EQ(measured(assumed, "samplerate"), 48000);
  EXPECT_THAT(fact(assumed, "sample rate"), HasSubstr("48000 Hz, assumed"));
  EXPECT_EQ(fact(checked({{"samplerate", {96000}}}), "sample rate"), "96000 Hz\n");
}

TEST(CheckSettings, TheCutoffIsExplainedForEachFamily) {
  EXPECT_THAT(fact(checked({{"topology", {"butterworth"}}}), "cutoff"), HasSubstr("-3.01 dB"));
  EXPECT_THAT(fact(checked({{"topology", {"chebyshev-1"}}, {"passband_ripple", {2}}}), "cutoff"),
              HasSubstr("ripple of 2 dB ends"));
  EXPECT_THAT(
      fact(checked({{"topology", {"chebyshev-2"}}, {"stopband_attenuation", {70}}}), "cutoff"),
      HasSubstr("stopband begins there, 70 dB down"));
}

TEST(CheckSettings, NormalizedCutoffsAreShownAsFractionsToo) {
  const Verdict verdict =
      checked({{"units", {"normalized"}}, {"response", {"bandpass"}}, {"frequency", {0.25, 0.5}}});
  EXPECT_THAT(fact(verdict, "cutoff"),
              HasSubstr("6000 Hz and 12000 Hz (0.25 and 0.5 of the Nyquist frequency)"));
}

TEST(CheckSettings, WithoutABandTheCutoffsHaveNoMeaning) {
  const Settings equal{{"response", {"bandpass"}}, {"frequency", {1000, 1000}}};
  EXPECT_EQ(fact(checked(equal), "cutoff"), "1000 Hz and 1000 Hz\n");
}

TEST(CheckSettings, ReversedCutoffsAreAProblem) {
  const Verdict verdict = checked(
      {{"topology", {"butterworth"}}, {"response", {"bandpass"}}, {"frequency", {3400, 300}}});
  EXPECT_EQ(problems(verdict), (std::set<std::string>{"cutoff", "stability"}));
  EXPECT_THAT(problem(verdict, "cutoff"), HasSubstr("--frequency 300 3400"));
  EXPECT_THAT(problem(verdict, "stability"), HasSubstr("fix the cutoffs first"));
}

TEST(CheckSettings, EqualCutoffsAreAProblem) {
  for (const char *response : {"bandpass", "bandstop"})
    EXPECT_THAT(problem(checked({{"response", {response}}, {"frequency", {1000, 1000}}}), "cutoff"),
                HasSubstr("the two cutoffs are equal"));
}

TEST(CheckSettings, CutoffsThatAreClippedToOneAreAProblem) {
  EXPECT_THAT(
      problem(checked({{"response", {"bandpass"}}, {"frequency", {30000, 40000}}}), "cutoff"),
      HasSubstr("the two cutoffs are both 23997.6 Hz"));
}

TEST(CheckSettings, ACutoffOutOfRangeIsAProblem) {
  const Verdict nyquist = checked({{"frequency", {24000}}});
  EXPECT_EQ(problems(nyquist), std::set<std::string>{"cutoff"});
  EXPECT_DOUBLE_EQ(nyquist.findings.measured["cutoffs_hz"][0].get<double>(), 23997.6);
  EXPECT_THAT(problem(nyquist, "cutoff"),
              AllOf(HasSubstr("24000 Hz is too high, so 23997.6 Hz is used"),
                    HasSubstr("or a higher --samplerate")));
  EXPECT_THAT(problem(checked({{"frequency", {-5}}}), "cutoff"),
              AllOf(HasSubstr("2.4 Hz is used"), Not(HasSubstr("--units normalized"))))
      << "it is not a fraction";
  EXPECT_THAT(problem(checked({{"response", {"bandpass"}}, {"frequency", {300, 30000}}}), "cutoff"),
              HasSubstr("30000 Hz is too high"));
}

TEST(CheckSettings, TheEndsOfTheRangeOfCutoffsAreInIt) {
  const auto problem_with = [](double cutoff) {
    return problem(checked({{"units", {"normalized"}}, {"frequency", {cutoff}}}), "cutoff");
  };
  for (const double within : {0.0001, 0.9999}) EXPECT_EQ(problem_with(within), "");
  EXPECT_THAT(problem_with(0.0000999), HasSubstr("too low"));
  EXPECT_THAT(problem_with(0.99991), HasSubstr("too high"));
}

TEST(CheckSettings, ACutoffInTheOtherUnitIsRecognised) {
  EXPECT_THAT(problem(checked({{"frequency", {0.25}}}), "cutoff"), HasSubstr("--units normalized"));
  EXPECT_THAT(problem(checked({{"units", {"normalized"}}, {"frequency", {1000}}}), "cutoff"),
              HasSubstr("--units hertz"));
}

TEST(CheckSettings, ACutoffAtTheEndOfTheRangeIsNotClippedByRounding) {
  EXPECT_EQ(problem(checked({{"frequency", {2.4}}}), "cutoff"), "");
  EXPECT_EQ(
      problem(checked({{"frequency", {0.9999 * 22050.0}}, {"samplerate", {44100}}}), "cutoff"), "");
  EXPECT_THAT(problem(checked({{"frequency", {2.39}}}), "cutoff"),
              HasSubstr("2.39 Hz is too low, so 2.4 Hz is used"));
}

TEST(CheckSettings, ASampleRateThatIsNotUsedIsAProblem) {
  EXPECT_THAT(problem(checked({{"samplerate", {"31.25"}}, {"frequency", {5}}}), "sample rate"),
              HasSubstr("31.25 Hz was asked for, but 31 Hz is used"));
  EXPECT_THAT(problem(checked({{"samplerate", {-44100}}}), "sample rate"),
              HasSubstr("-44100 Hz was asked for, but 48000 Hz is used"));
  EXPECT_THAT(problem(checked({{"samplerate", {"0.5"}}}), "sample rate"), HasSubstr("48000"));
  EXPECT_EQ(problem(checked({{"samplerate", {0}}}), "sample rate"), "");
  EXPECT_EQ(problem(checked({{"samplerate", {"44100.0"}}}), "sample rate"), "");
}

TEST(CheckSettings, ClippedSettingsAreAProblem) {
  EXPECT_THAT(problem(checked({{"order", {500}}}), "order"),
              HasSubstr("500 was asked for, but 200 is used\n--order 200;"));
  EXPECT_THAT(problem(checked({{"order", {"4.5"}}}), "order"),
              HasSubstr("4.5 was asked for, but 4 is used"));
  EXPECT_THAT(problems(checked({{"stopband_attenuation", {300}}})),
              Contains("stopband_attenuation"));
  EXPECT_THAT(problems(checked({{"order", {"5.0"}}, {"stopband_attenuation", {96}}})), IsEmpty());
}

TEST(CheckSettings, SettingsWithoutEffectAreNoted) {
  EXPECT_THAT(note(checked({{"passband_ripple", {1}}}), "passband_ripple"),
              HasSubstr("a chebyshev-2 does not use it\nto use it, --topology chebyshev-1"));
  EXPECT_THAT(note(checked({{"topology", {"butterworth"}}, {"stopband_attenuation", {50}}}),
                   "stopband_attenuation"),
              HasSubstr("a butterworth does not use it\nto use it, --topology chebyshev-2"));
  EXPECT_EQ(note(checked({{"stopband_attenuation", {60}}}), "stopband_attenuation"), "");
  EXPECT_THAT(note(checked({{"frequency", {300, 3400}}}), "cutoff"), HasSubstr("3400 is not used"));
}

TEST(CheckSettings, OnlyTypedSettingsAreNoted) {
  const FilterUnderTest filter = new_filter(designer_with_module(), {{"passband_ripple", {1}}}, {});
  EXPECT_EQ(note(judge(filter), "passband_ripple"), "");
}

TEST(CheckSettings, AnEmptyCascadeIsAProblem) {
  const Verdict verdict = checked({{"zpk_output", {"off"}}});
  EXPECT_EQ(problems(verdict), std::set<std::string>{"published"});
  EXPECT_THAT(problem(verdict, "published"), HasSubstr("--zpk-output on"));
  EXPECT_EQ(verdict.findings.measured["published"],
            (text::Json{{"roots", false}, {"sections", false}, {"transfer_function", false}}));
}

TEST(CheckSettings, ThePublishedFormsAreListed) {
  EXPECT_EQ(fact(checked({{"tf_output", {"on"}}}), "published"),
            "zeros, poles and gain; sections; transfer function\n");
  const Verdict roots = checked({{"sos_output", {"off"}}});
  EXPECT_EQ(fact(roots, "published"), "zeros, poles and gain\n");
  EXPECT_THAT(problems(roots), IsEmpty());
  EXPECT_THAT(problem(checked({{"sos_output", {"off"}}, {"zpk_output", {"off"}}}), "published"),
              HasSubstr("no form of the filter is published"));
}
