// What was found, put together.

#include <fstream>
#include <sstream>

#include "check_test.h"

using designer::Settings;
using testing::ElementsAre;
using testing::HasSubstr;
using namespace verdict;

namespace {

std::vector<std::string> keys(const text::Json &object) {
  std::vector<std::string> list;
  for (const auto &[key, value] : object.items()) list.push_back(key);
  return list;
}

std::string document() {
  std::ifstream file(DOCUMENTS_FOLDER "/check.md");
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// Filters with every finding that a design can have.
const std::vector<Settings> filters{
    {},
    {{"topology", {"chebyshev-1"}}, {"order", {500}}},
    {{"zpk_output", {"off"}}},
    {{"response", {"bandpass"}}, {"frequency", {3400, 300}}, {"passband_ripple", {1}}},
    {{"topology", {"butterworth"}}, {"frequency", {3}}, {"stopband_attenuation", {50}}},
    {{"frequency", {300, 400}}}};

}  // namespace

TEST(Findings, AreAddedBehindOthersWithTheirNumbers) {
  Findings first, second;
  first.fact("a", "first");
  first.measured["x"] = 1;
  second.note("b", "second", "change it");
  second.problem("a", "third", "change it back");
  second.measured["c"] = 2;
  second.measured["b"] = 3;
  first += second;
  ASSERT_EQ(first.list.size(), 3U);
  EXPECT_EQ(first.list[1].text, "second");
  EXPECT_EQ(first.list[2].weight, Weight::problem);
  EXPECT_THAT(keys(first.measured), ElementsAre("x", "c", "b"));
}

TEST(Verdict, CountsItsProblems) {
  EXPECT_EQ(checked({}).problems(), 0U);
  EXPECT_EQ(checked({{"order", {500}}, {"frequency", {24000}}}).problems(), 2U);
}

TEST(Verdict, HasTheFilterAsItsTitle) {
  EXPECT_THAT(checked({}).title, HasSubstr("chebyshev-2 lowpass of order 5, cutoff 3000 Hz"));
}

TEST(Verdict, EveryKeyIsInItsDocument) {
  const std::string text = document();
  std::vector<Verdict> verdicts{checked_sections({{1, 2, 1, -1.5, 0.75}})};
  for (const Settings &settings : filters) verdicts.push_back(checked(settings));
  for (const Verdict &verdict : verdicts) {
    for (const std::string &key : keys(verdict.findings.measured))
      EXPECT_THAT(text, HasSubstr('`' + key + '`'));
    for (const Finding &finding : verdict.findings.list)
      EXPECT_THAT(text, HasSubstr('`' + finding.about + '`'));
  }
}

TEST(Verdict, EveryProblemAndNoteSaysWhatToChange) {
  for (const Settings &settings : filters) {
    const Verdict verdict = checked(settings);
    for (const Finding &finding : verdict.findings.list)
      EXPECT_EQ(finding.change.words.empty(), finding.weight == Weight::fact)
          << verdict.title << ": " << finding.text;
  }
}

// Programs and readers find what they look for at its place.
TEST(Verdict, TheOrderIsThatOfTheChecks) {
  EXPECT_THAT(
      keys(checked({{"topology", {"chebyshev-1"}}}).findings.measured),
      ElementsAre("poles", "sections", "samplerate", "cutoffs_hz", "published", "finite", "stable",
                  "margin", "ringing_samples", "ringing_ms", "gain", "reference_hz", "reference_db",
                  "passband_highest_db", "passband_lowest_db", "half_power_hz",
                  "roots_to_sections_db", "pairs_intact", "transfer_function_db",
                  "transfer_function_poles_outside", "transfer_function_safe", "noise_db",
                  "noise_exported_db", "between_sections_lowest_db", "between_sections_highest_db",
                  "gain_in_first_section", "float_safe", "float_structure", "float_db",
                  "float_stable", "float_pole_movement", "float_noise_db",
                  "float_noise_exported_db", "float_noise_direct_db"));
}

TEST(Verdict, WithoutLevelsThereIsNothingToCompare) {
  for (const Settings &settings :
       {Settings{{"response", {"bandpass"}}, {"frequency", {3400, 300}}},
        Settings{{"response", {"bandpass"}}, {"frequency", {1000, 1000}}},
        Settings{{"topology", {"butterworth"}}, {"order", {200}}, {"frequency", {24}}}}) {
    const Verdict verdict = checked(settings);
    EXPECT_TRUE(verdict.findings.measured.contains("finite")) << verdict.title;
    for (const char *key : {"reference_db", "pairs_intact", "float_db"})
      EXPECT_FALSE(verdict.findings.measured.contains(key)) << verdict.title;
  }
}
