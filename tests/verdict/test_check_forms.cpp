// Whether the forms of a filter are the same filter.

#include "check_test.h"
#include "checks.h"

using designer::Settings;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using namespace verdict;

namespace {

FilterUnderTest filter_with(const analysis::Transfer &transfer) {
  FilterUnderTest filter{};
  filter.forms.sections = {{0.125, 0.25, 0.125, -1.0, 0.5}};
  filter.forms.roots = {{-1.0, -1.0}, {{0.5, 0.5}, {0.5, -0.5}}, 0.125};
  filter.forms.transfer = transfer;
  filter.published.transfer = transfer;
  filter.published.samplerate = 48000.0;
  return filter;
}

std::string said_of(const analysis::Transfer &transfer) {
  const Findings findings = check_forms(filter_with(transfer));
  return said(findings, "transfer function", Weight::fact) +
         said(findings, "transfer function", Weight::problem);
}

Settings with(Settings settings, const char *name, const designer::Value &value) {
  settings.set(name, {value});
  return settings;
}

}  // namespace

TEST(CheckForms, ANumeratorIsMultipliedOnlyWhereThatMakesTheFilter) {
  EXPECT_THAT(said_of({{0.125, 0.25, 0.125}, {1.0, -1.0, 0.5}}), HasSubstr("safe"));
  EXPECT_THAT(said_of({{1.0, 2.0, 1.0}, {1.0, -1.0, 0.5}}),
              HasSubstr("multiply the numerator by 0.125"));
  // The poles mirrored at the unit circle: after the same factor the level is the same, and the
  // filter is not stable.
  const std::string unstable = said_of({{1.0, 2.0, 1.0}, {0.5, -1.0, 1.0}});
  EXPECT_THAT(unstable, HasSubstr("it is unstable, with 2 poles outside the unit circle"));
  EXPECT_THAT(unstable, HasSubstr("take the sections, or several filters"));
  EXPECT_THAT(unstable, Not(HasSubstr("multiply")));
}

TEST(CheckForms, ATransferFunctionThatBreaksDownIsAProblemOnceItIsPublished) {
  const Settings settings{{"topology", {"butterworth"}}, {"order", {12}}, {"frequency", {100}}};
  const Verdict published = checked(with(settings, "tf_output", "on"));
  EXPECT_EQ(problems(published), std::set<std::string>{"transfer function"});
  EXPECT_THAT(problem(published, "transfer function"),
              AllOf(HasSubstr("unstable"), HasSubstr("take the sections")));
  const Verdict unpublished = checked(settings);
  EXPECT_THAT(problems(unpublished), IsEmpty());
  EXPECT_THAT(note(unpublished, "transfer function"), HasSubstr("would break down"));
}

TEST(CheckForms, ATransferFunctionThatIsSafeIsCalledSo) {
  const Verdict published = checked({{"tf_output", {"on"}}});
  EXPECT_THAT(fact(published, "transfer function"), HasSubstr("safe"));
  EXPECT_EQ(published.findings.measured["transfer_function_safe"], true);
  EXPECT_EQ(measured(published, "transfer_function_poles_outside"), 0);
  EXPECT_THAT(fact(checked({}), "transfer function"), HasSubstr("would be safe"));
}

TEST(CheckForms, AWrongScaleOfTheNumeratorComesWithItsFactor) {
  const FilterUnderTest filter = designed({{"topology", {"butterworth"}},
                                           {"response", {"bandpass"}},
                                           {"order", {2}},
                                           {"units", {"normalized"}},
                                           {"frequency", {0.1, 0.5254322336174737}},
                                           {"tf_output", {"on"}}});
  const std::string text = problem(judge(filter), "transfer function");
  ASSERT_THAT(text, HasSubstr("wrong scale"));
  const std::string before = "multiply the numerator by ";
  const double factor = std::stod(text.substr(text.find(before) + before.size()));
  EXPECT_NEAR(filter.published.transfer.numerator[0] * factor / filter.published.roots->gain, 1.0,
              1e-12);
}

TEST(CheckForms, RootsAndSectionsMayDifferByAHundredthOfADecibel) {
  const auto problem_with = [](double factor) {
    FilterUnderTest filter = filter_with({{0.125, 0.25, 0.125}, {1.0, -1.0, 0.5}});
    filter.forms.roots.gain *= factor;
    return said(check_forms(filter), "forms", Weight::problem);
  };
  EXPECT_EQ(problem_with(1.0011), "") << "0.0096 dB";
  EXPECT_THAT(problem_with(1.0012), HasSubstr("0.0104 dB from the sections"));
}

TEST(CheckForms, ASectionWithOtherPolesIsNamed) {
  FilterUnderTest filter = designed({{"topology", {"butterworth"}}, {"order", {4}}});
  filter.forms.sections[1].a1 += 1e-14;
  const Findings findings = check_forms(filter);
  EXPECT_THAT(said(findings, "sections", Weight::problem),
              HasSubstr("these do not hold a pair of the poles: 2\n"));
  EXPECT_EQ(findings.measured["pairs_intact"], false);
}

TEST(CheckForms, PolesThatNoSectionHasAreAProblem) {
  FilterUnderTest filter = designed({{"topology", {"butterworth"}}, {"order", {4}}});
  filter.forms.sections.pop_back();
  EXPECT_THAT(said(check_forms(filter), "sections", Weight::problem),
              HasSubstr("some of the poles are in no section"));
}

// Only the file's own transfer function says something of the file.
TEST(CheckForms, ASavedFilterWithoutATransferFunctionIsNotJudgedByAnother) {
  FilterUnderTest filter = designed({});
  filter.origin = Origin::saved;
  const Findings findings = check_forms(filter);
  EXPECT_FALSE(findings.measured.contains("transfer_function_db"));
  EXPECT_TRUE(findings.measured.contains("pairs_intact"));
}
