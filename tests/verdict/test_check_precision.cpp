// Whether the sections can do with fewer digits than theirs.

#include "check_test.h"
#include "checks.h"

using testing::HasSubstr;
using namespace verdict;

TEST(CheckPrecision, SaysWhetherFloatsAreEnough) {
  EXPECT_THAT(fact(checked({}), "float"), HasSubstr("safe"));
  EXPECT_THAT(note(checked({{"frequency", {3}}}), "float"), HasSubstr("not safe"));
  EXPECT_THAT(
      note(checked({{"topology", {"butterworth"}}, {"order", {30}}, {"frequency", {60}}}), "float"),
      HasSubstr("too small for a float"));
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
