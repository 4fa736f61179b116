// Whether the sections can do with fewer digits than theirs.

#include "check_test.h"
#include "checks.h"

using testing::HasSubstr;
using namespace verdict;

namespace {

designer::Settings lowpass(double hz, t_long order) {
  return {{"topology", {"butterworth"}}, {"order", {order}}, {"frequency", {hz}}};
}

}  // namespace

TEST(CheckPrecision, SaysWhetherFloatsAreEnough) {
  EXPECT_THAT(fact(checked({}), "float"),
              HasSubstr("safe as 'veltane export --for c-float' writes it: in state-variable "
                        "sections\nthere they make noise 132 dB below"));
  EXPECT_THAT(fact(checked(lowpass(15000, 4)), "float"),
              HasSubstr("writes it: in direct form II transposed"));
  EXPECT_EQ(note(checked({}), "float"), "");
}

TEST(CheckPrecision, NamesProgramsThatHaveDirectFormsOnly) {
  const Verdict low = checked(lowpass(60, 30));
  EXPECT_THAT(fact(low, "float"),
              HasSubstr("not safe as published: the gain is too small for a float"));
  EXPECT_THAT(fact(checked({{"topology", {"butterworth"}},
                            {"response", {"bandpass"}},
                            {"order", {8}},
                            {"frequency", {20, 20000}}}),
                   "float"),
              HasSubstr("not safe as published: the sections make noise 107 dB above"));
  EXPECT_THAT(note(low, "float"),
              HasSubstr("not safe in programs that have direct forms only, such as CMSIS-DSP and "
                        "SuperCollider: they make noise 54 dB below"));
  EXPECT_THAT(note(low, "float"), HasSubstr("\ntake 'veltane export --for c-float'"));
  EXPECT_THAT(note(checked({{"frequency", {3}}}), "float"),
              HasSubstr("rounding the sections puts a pole on the unit circle"));
  EXPECT_EQ(low.findings.measured.at("float_structure"), "state-variable");
  EXPECT_EQ(checked(lowpass(15000, 4)).findings.measured.at("float_structure"),
            "direct-2-transposed");
}

// A resonance half way between z = 1 and -1, narrower than floats have digits for.
TEST(CheckPrecision, SaysThatNoStructureIsEnough) {
  FilterUnderTest filter = designed({});
  const double radius = 1 - 1e-8;
  filter.forms.roots.poles = {{0, radius}, {0, -radius}};
  filter.forms.roots.zeros = {1.0, -1.0};
  filter.forms.sections = {{1e-8, 0, -1e-8, 0, radius * radius}};
  const Findings findings = check_precision(filter);
  EXPECT_THAT(said(findings, "float", Weight::note),
              testing::StartsWith("not safe as 'veltane export --for c-float'"));
  EXPECT_THAT(said(findings, "float", Weight::note), testing::Not(HasSubstr("CMSIS")));
  EXPECT_EQ(findings.measured.at("float_safe"), false);
}

// What the module publishes, and what an arranged cascade would be.
TEST(CheckPrecision, SaysWhereTheGainIs) {
  FilterUnderTest filter = designed({});
  EXPECT_EQ(check_precision(filter).measured["gain_in_first_section"], true);
  EXPECT_THAT(said(check_precision(filter), "gain", Weight::fact),
              HasSubstr(", all in the first section; peaks between sections from "));
  for (double *b :
       {&filter.forms.sections[1].b0, &filter.forms.sections[1].b1, &filter.forms.sections[1].b2})
    *b *= 0.5;
  EXPECT_EQ(check_precision(filter).measured["gain_in_first_section"], false);
}
