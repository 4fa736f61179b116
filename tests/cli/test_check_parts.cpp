// What `veltane check` finds in filters that no design gives.

#include <cmath>
#include <limits>

#include "run_command.h"
#include "subject.h"

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

// The finding about something, its text and what to change; empty when there is none.
std::string said(const cli::Verdict &verdict, const std::string &about) {
  for (const cli::Finding &finding : verdict.findings)
    if (finding.about == about) return finding.text + '\n' + finding.change;
  return "";
}

// Of two sections that have their peak at DC; the first one's is at `db`, the second one makes it 0.
std::string floats(double db) {
  const double factor = std::pow(10.0, db / 20);
  cli::Subject subject;
  for (const double b : {0.0625 * factor, 0.0625 / factor})
    subject.sections.push_back({b, 2 * b, b, -1.0, 0.25});
  subject.roots.gain = 0.0625 * 0.0625;
  subject.whole.samplerate = 48000.0;
  cli::Verdict verdict;
  check_rounding(subject, verdict);
  return said(verdict, "float");
}

std::string transfer_function(const analysis::Transfer &transfer) {
  cli::Subject subject;
  subject.sections = {{0.125, 0.25, 0.125, -1.0, 0.5}};
  subject.roots = {{-1.0, -1.0}, {{0.5, 0.5}, {0.5, -0.5}}, 0.125};
  subject.whole.samplerate = 48000.0;
  subject.transfer = transfer;
  subject.published.numerator = transfer.numerator;
  subject.published.denominator = transfer.denominator;
  cli::Verdict verdict;
  check_forms(subject, verdict);
  return said(verdict, "transfer function");
}

}  // namespace

TEST(CheckFloats, PeaksBetweenSectionsUpTo600DecibelsAreSafe) {
  for (const double safe : {0.0, 599.9, -599.9})
    EXPECT_THAT(floats(safe), StartsWith("safe: rounding"));
  EXPECT_THAT(floats(600.1), StartsWith("not safe: peaks between sections are from 0 to 600 dB"));
  EXPECT_THAT(floats(-600.1), StartsWith("not safe: peaks between sections are from -600 to 0 dB"));
}

TEST(CheckTransfer, ANumeratorIsMultipliedOnlyWhereThatMakesTheFilter) {
  EXPECT_THAT(transfer_function({{0.125, 0.25, 0.125}, {1.0, -1.0, 0.5}}), HasSubstr("safe"));
  const std::string scaled = transfer_function({{1.0, 2.0, 1.0}, {1.0, -1.0, 0.5}});
  EXPECT_THAT(scaled, HasSubstr("multiply the numerator by 0.125"));
  // The poles mirrored at the unit circle: after the same factor the level is the same, and the
  // filter is not stable.
  const std::string unstable = transfer_function({{1.0, 2.0, 1.0}, {0.5, -1.0, 1.0}});
  EXPECT_THAT(unstable, HasSubstr("it is unstable, with 2 poles outside the unit circle"));
  EXPECT_THAT(unstable, HasSubstr("take the sections, or several filters"));
  EXPECT_THAT(unstable, Not(HasSubstr("multiply")));
}

// A gain below the normal doubles has fewer digits than they.
TEST(CheckGain, BelowTheNormalDoublesIsAProblem) {
  const auto said_of = [](double gain) {
    cli::Subject subject;
    subject.sections = {{gain, 0.0, 0.0, -0.5, 0.0}};
    subject.roots = {{0.0}, {0.5}, gain};
    subject.whole.samplerate = 48000.0;
    cli::Verdict verdict;
    check_health(subject, verdict);
    return said(verdict, "gain");
  };
  const double least = std::numeric_limits<double>::min();
  EXPECT_EQ(said_of(least), "");
  EXPECT_EQ(said_of(-least), "");
  EXPECT_THAT(said_of(least / 2), HasSubstr("so small that it has lost digits"));
  EXPECT_THAT(said_of(0.0), HasSubstr("the filter is silent"));
}
