// That what to change in settings is a remedy: with it, what was found is no longer found.

#include "check_test.h"

using designer::Settings;
using testing::SizeIs;
using namespace verdict;

namespace {

Settings merged(Settings settings, const Settings &remedy) {
  for (const auto &[name, values] : remedy) settings.set(name, values);
  return settings;
}

const Finding *found(const Verdict &verdict, const std::string &about, Weight weight) {
  for (const Finding &finding : verdict.findings.list)
    if (finding.about == about && finding.weight == weight) return &finding;
  return nullptr;
}

std::vector<Settings> remedies(const Settings &settings, const std::string &about,
                               Weight weight = Weight::problem) {
  const Verdict verdict = checked(settings);
  const Finding *const finding = found(verdict, about, weight);
  return finding == nullptr ? std::vector<Settings>{} : finding->change.remedies;
}

std::string line_of(const Settings &settings) {
  std::string line;
  for (const auto &[name, values] : settings) {
    line += line.empty() ? name : "; " + name;
    for (const designer::Value &value : values) line += ' ' + patchbay::to_text(value);
  }
  return line;
}

struct Case {
  Settings settings;
  std::string about;
  Weight weight;
  std::vector<std::string> remedies;
};

std::vector<std::string> texts(const std::vector<Settings> &list) {
  std::vector<std::string> made;
  for (const Settings &settings : list) made.push_back(line_of(settings));
  return made;
}

const std::vector<Case> cases{
    {{{"samplerate", {"31.25"}}, {"frequency", {5}}},
     "sample rate",
     Weight::problem,
     {"samplerate 31"}},
    {{{"frequency", {24000}}},
     "cutoff",
     Weight::problem,
     {"frequency 23997.6", "samplerate 96000"}},
    {{{"frequency", {0.25}}}, "cutoff", Weight::problem, {"units normalized", "frequency 2.4"}},
    {{{"frequency", {-5}}}, "cutoff", Weight::problem, {"frequency 2.4"}},
    {{{"units", {"normalized"}}, {"frequency", {1000}}},
     "cutoff",
     Weight::problem,
     {"units hertz", "frequency 0.9999"}},
    {{{"response", {"bandpass"}}, {"frequency", {30000, 40000}}},
     "cutoff",
     Weight::problem,
     {"samplerate 96000"}},
    {{{"response", {"bandpass"}}, {"frequency", {300, 30000}}},
     "cutoff",
     Weight::problem,
     {"frequency 300 23997.6", "samplerate 96000"}},
    {{{"response", {"bandstop"}}, {"frequency", {3400, 300}}},
     "cutoff",
     Weight::problem,
     {"frequency 300 3400"}},
    {{{"topology", {"butterworth"}}, {"response", {"bandpass"}}, {"frequency", {3400, 300}}},
     "stability",
     Weight::problem,
     {"frequency 300 3400"}},
    {{{"order", {500}}}, "order", Weight::problem, {"order 200"}},
    {{{"stopband_attenuation", {300}}},
     "stopband_attenuation",
     Weight::problem,
     {"stopband_attenuation 240"}},
    {{{"frequency", {3400, 300}}},
     "cutoff",
     Weight::note,
     {"response bandpass; frequency 300 3400", "response bandstop; frequency 300 3400"}},
    {{{"passband_ripple", {1}}}, "passband_ripple", Weight::note, {"topology chebyshev-1"}},
    {{{"zpk_output", {"off"}}}, "published", Weight::problem, {"zpk_output on"}},
    {{{"zpk_output", {"off"}}, {"sos_output", {"off"}}},
     "published",
     Weight::problem,
     {"zpk_output on; sos_output on"}},
    {{{"order", {40}}, {"tf_output", {"on"}}, {"zpk_output", {"off"}}},
     "transfer function",
     Weight::problem,
     {"tf_output off; sos_output on; zpk_output on"}},
};

}  // namespace

TEST(Remedies, AreTheWordsAsSettings) {
  for (const Case &the : cases)
    EXPECT_EQ(texts(remedies(the.settings, the.about, the.weight)), the.remedies)
        << line_of(the.settings);
}

TEST(Remedies, EachIsEnough) {
  for (const Case &the : cases)
    for (const Settings &remedy : remedies(the.settings, the.about, the.weight)) {
      const Verdict verdict = checked(merged(the.settings, remedy));
      EXPECT_EQ(found(verdict, the.about, the.weight), nullptr)
          << line_of(the.settings) << " with " << line_of(remedy);
    }
}

TEST(Remedies, BringNoProblem) {
  for (const Case &the : cases)
    for (const Settings &remedy : remedies(the.settings, the.about, the.weight)) {
      if (the.about == "order") continue;  // 200 is allowed, and too high for this cutoff
      EXPECT_THAT(problems(checked(merged(the.settings, remedy))), testing::IsEmpty())
          << line_of(the.settings) << " with " << line_of(remedy);
    }
}

TEST(Remedies, ThereAreNoneWhereSettingsCannotSayIt) {
  const Settings equal{{"response", {"bandpass"}}, {"frequency", {1000, 1000}}};
  EXPECT_THAT(remedies(equal, "cutoff"), SizeIs(0));
  EXPECT_THAT(remedies({{"frequency", {1000, 1000}}}, "cutoff", Weight::note), SizeIs(0));
  EXPECT_THAT(remedies({{"frequency", {1e9}}}, "cutoff"), SizeIs(1)) << "no rate is so high";
}
