// Whether the sections can do with fewer digits than theirs.

#include <cmath>

#include "check_test.h"
#include "checks.h"

using testing::HasSubstr;
using testing::StartsWith;
using namespace verdict;

namespace {

// Of two sections that have their peak at DC; the first one's is at `db`, the second one makes it 0.
std::string said_of_peaks(double db) {
  const double factor = std::pow(10.0, db / 20);
  FilterUnderTest filter{};
  for (const double b : {0.0625 * factor, 0.0625 / factor})
    filter.forms.sections.push_back({b, 2 * b, b, -1.0, 0.25});
  filter.forms.roots.gain = 0.0625 * 0.0625;
  filter.published.samplerate = 48000.0;
  const Findings findings = check_precision(filter);
  return said(findings, "float", Weight::fact) + said(findings, "float", Weight::note);
}

}  // namespace

TEST(CheckPrecision, PeaksBetweenSectionsUpTo600DecibelsAreSafe) {
  for (const double safe : {0.0, 599.9, -599.9})
    EXPECT_THAT(said_of_peaks(safe), StartsWith("safe: rounding"));
  EXPECT_THAT(said_of_peaks(600.1),
              StartsWith("not safe: peaks between sections are from 0 to 600 dB"));
  EXPECT_THAT(said_of_peaks(-600.1),
              StartsWith("not safe: peaks between sections are from -600 to 0 dB"));
}

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
