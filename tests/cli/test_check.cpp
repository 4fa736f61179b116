// What `veltane check` says of a filter.

#include <nlohmann/json.hpp>
#include <numbers>
#include <set>

#include "../cascade_response.h"
#include "run_command.h"
#include "scratch_folder.h"

using Json = nlohmann::ordered_json;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

struct Checked {
  int status;
  Json document;

  // Texts and changes of the findings about it that have this weight.
  std::string said(const std::string &about, const std::string &weight) const {
    std::string text;
    for (const Json &finding : document["findings"])
      if (finding["about"] == about && finding["weight"] == weight)
        text += finding["text"].get<std::string>() + '\n' + finding["change"].get<std::string>();
    return text;
  }

  std::set<std::string> problems() const {
    std::set<std::string> abouts;
    for (const Json &finding : document["findings"])
      if (finding["weight"] == "problem") abouts.insert(finding["about"].get<std::string>());
    return abouts;
  }

  double measured(const char *key) const { return document["measured"][key].get<double>(); }
};

Checked checked(const std::string &arguments) {
  const Outcome outcome = veltane("check " + arguments + " --format json");
  EXPECT_EQ(outcome.err, "");
  Checked result{outcome.status, Json::parse(outcome.out)};
  EXPECT_EQ(result.status, result.problems().empty() ? 0 : 1) << arguments;
  EXPECT_EQ(result.document["sound"], result.problems().empty()) << arguments;
  for (const Json &finding : result.document["findings"])
    EXPECT_TRUE(finding["weight"] != "problem" || finding["change"] != "") << finding;
  return result;
}

Json dictionary(const std::string &arguments) {
  return Json::parse(veltane("design --format json " + arguments).out)["dictionary"];
}

using SavedCheck = ScratchFolder;

std::string text_of(const Json &document) { return document.dump(); }

}  // namespace

TEST(Check, ADefaultFilterGetsAShortCalmVerdict) {
  const Outcome outcome = veltane("check");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_TRUE(outcome.out.starts_with("sound: chebyshev-2 lowpass of order 5, cutoff 3000 Hz"));
  EXPECT_THAT(outcome.out, AllOf(Not(HasSubstr("PROBLEM")), Not(HasSubstr("note:"))));
  EXPECT_LT(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 18);
  std::istringstream lines(outcome.out);
  for (std::string line; std::getline(lines, line);) EXPECT_LT(line.size(), 112U) << line;
}

TEST(Check, EveryKeyIsInItsDocument) {
  const std::string document = read_file(DOCUMENTS_FOLDER "/check.md");
  for (const char *options :
       {"", "--topology chebyshev-1 --order 500 --units radians", "--zpk-output off",
        "--response bandpass --frequency 3400 300 --passband-ripple 1",
        "--topology butterworth --frequency 3 --stopband-attenuation 50", "--frequency 300 400"}) {
    const Checked verdict = checked(options);
    for (const auto &[key, value] : verdict.document["measured"].items())
      EXPECT_THAT(document, HasSubstr('`' + key + '`'));
    for (const auto &[key, value] : verdict.document.items())
      EXPECT_THAT(document, HasSubstr('`' + key + '`'));
    for (const Json &finding : verdict.document["findings"])
      EXPECT_THAT(document, HasSubstr('`' + finding["about"].get<std::string>() + '`'));
  }
}

TEST(Check, ABandHasTwiceThePoles) {
  const Checked band = checked("--response bandstop --frequency 300 3400 --order 7");
  EXPECT_EQ(band.measured("poles"), 14);
  EXPECT_THAT(band.said("order", "fact"), HasSubstr("twice as many poles: 14"));
  EXPECT_EQ(checked("--order 7").measured("poles"), 7);
}

TEST(Check, SaysWhatTheCutoffMeansInEachFamily) {
  EXPECT_THAT(checked("--topology butterworth").said("cutoff", "fact"), HasSubstr("-3.01 dB"));
  EXPECT_THAT(checked("--topology chebyshev-1 --passband-ripple 2").said("cutoff", "fact"),
              HasSubstr("ripple of 2 dB ends"));
  EXPECT_THAT(checked("--topology chebyshev-2 --stopband-attenuation 70").said("cutoff", "fact"),
              HasSubstr("stopband begins, 70 dB down"));
}

TEST(Check, MeasuresWhatTheSectionsDo) {
  for (const char *options :
       {"--topology chebyshev-1 --order 6 --frequency 1000 --passband-ripple 1",
        "--topology chebyshev-1 --order 6 --frequency 1000 --passband-ripple 6",
        "--topology chebyshev-2 --order 6 --response bandpass --frequency 300 3400",
        "--topology chebyshev-2 --order 5 --response bandstop --frequency 300 3400",
        "--topology butterworth --order 5 --response highpass --frequency 5000"}) {
    const Checked verdict = checked(options);
    EXPECT_EQ(verdict.status, 0) << options;
    const auto cascade = dictionary(options)["cascade"].get<std::vector<double>>();
    const auto level_db = [&](double hz) { return cascade_level_db(cascade, hz, 48000.0); };
    const Json &points = verdict.document["measured"]["half_power_hz"];
    ASSERT_FALSE(points.empty());
    for (const Json &hz : points) EXPECT_NEAR(level_db(hz), -3.0103, 1e-4) << options;
    EXPECT_NEAR(level_db(verdict.measured("reference_hz")), verdict.measured("reference_db"), 1e-9);
  }
}

TEST(Check, RingingFollowsFromTheOutermostPole) {
  const Json poles = dictionary("--order 8 --samplerate 96000")["poles"];
  double radius = 0.0;
  for (std::size_t i = 0; i < poles.size(); i += 2)
    radius = std::max(radius, std::hypot(poles[i].get<double>(), poles[i + 1].get<double>()));
  const Checked verdict = checked("--order 8 --samplerate 96000");
  EXPECT_NEAR(verdict.measured("margin"), 1 - radius, 1e-15);
  const double samples = verdict.measured("ringing_samples");
  EXPECT_NEAR(std::pow(radius, samples), 1e-3, 1e-9);
  EXPECT_NEAR(verdict.measured("ringing_ms"), samples / 96, 1e-9);
}

TEST(Check, ATransferFunctionThatBreaksDownIsNamed) {
  const std::string filter = "--topology butterworth --order 12 --frequency 100";
  const Checked published = checked(filter + " --tf-output on");
  EXPECT_EQ(published.problems(), std::set<std::string>{"transfer function"});
  EXPECT_THAT(published.said("transfer function", "problem"),
              AllOf(HasSubstr("unstable"), HasSubstr("take the sections")));
  const Checked unpublished = checked(filter);
  EXPECT_EQ(unpublished.status, 0);
  EXPECT_THAT(unpublished.said("transfer function", "note"), HasSubstr("would break down"));
}

TEST(Check, ATransferFunctionThatIsSafeIsCalledSo) {
  EXPECT_THAT(checked("--tf-output on").said("transfer function", "fact"), HasSubstr("safe"));
  EXPECT_THAT(checked("").said("transfer function", "fact"), HasSubstr("would be safe"));
}

TEST(Check, AWrongScaleOfTheNumeratorIsToldWithItsFactor) {
  const std::string filter =
      "--topology butterworth --response bandpass --order 2 --units normalized "
      "--frequency 0.1 0.5254322336174737 --tf-output on";
  const Checked verdict = checked(filter);
  const std::string said = verdict.said("transfer function", "problem");
  ASSERT_THAT(said, HasSubstr("wrong scale"));
  const std::string before = "multiply the numerator by ";
  const double factor = std::stod(said.substr(said.find(before) + before.size()));
  const Json published = dictionary(filter);
  EXPECT_NEAR(published["numerator"][0].get<double>() * factor / published["gain"].get<double>(),
              1.0, 1e-12);
}

TEST(Check, ReversedCutoffsAreAProblem) {
  const Checked verdict =
      checked("--topology butterworth --response bandpass --frequency 3400 300");
  EXPECT_EQ(verdict.problems(), (std::set<std::string>{"cutoff", "stability"}));
  EXPECT_THAT(verdict.said("cutoff", "problem"), HasSubstr("--frequency 300 3400"));
  EXPECT_LT(verdict.measured("margin"), 0);
}

TEST(Check, EqualCutoffsAreAProblem) {
  for (const char *response : {"bandpass", "bandstop"})
    EXPECT_THAT(checked(std::string("--frequency 1000 1000 --response ") + response)
                    .said("cutoff", "problem"),
                HasSubstr("equal"));
}

TEST(Check, CutoffsOutOfRangeAreAProblem) {
  const Checked nyquist = checked("--frequency 24000");
  EXPECT_EQ(nyquist.problems(), std::set<std::string>{"cutoff"});
  EXPECT_DOUBLE_EQ(nyquist.document["measured"]["cutoffs_hz"][0].get<double>(), 23997.6);
  EXPECT_THAT(nyquist.said("cutoff", "problem"), HasSubstr("23997.6 Hz is used"));
  EXPECT_THAT(checked("--frequency -5").said("cutoff", "problem"), HasSubstr("2.4 Hz is used"));
  for (const char *within : {"0.0001", "0.9999"})
    EXPECT_EQ(
        checked(std::string("--units normalized --frequency ") + within).said("cutoff", "problem"),
        "");
  for (const char *beyond : {"0.0000999", "0.99991"})
    EXPECT_NE(
        checked(std::string("--units normalized --frequency ") + beyond).said("cutoff", "problem"),
        "");
  EXPECT_THAT(checked("--frequency 0.25").said("cutoff", "problem"),
              HasSubstr("--units normalized"));
  EXPECT_THAT(checked("--units normalized --frequency 1000").said("cutoff", "problem"),
              HasSubstr("--units hertz"));
  EXPECT_THAT(checked("--response bandpass --frequency 300 30000").said("cutoff", "problem"),
              HasSubstr("30000 Hz is too high"));
}

TEST(Check, RadiansAreAProblemWithAWayOut) {
  const Checked verdict = checked("--units radians --frequency 0.5");
  EXPECT_EQ(verdict.problems(), std::set<std::string>{"units"});
  const std::string said = verdict.said("units", "problem");
  const std::string change = said.substr(said.find("--units"));
  const Checked mended = checked(change.substr(0, change.find(',')));
  EXPECT_EQ(mended.status, 0);
  EXPECT_NEAR(mended.document["measured"]["cutoffs_hz"][0].get<double>(),
              0.5 * 48000 / (2 * std::numbers::pi), 1e-4);
  EXPECT_THAT(checked("--units radians --frequency 3000").said("units", "problem"),
              HasSubstr("--units hertz"));
}

TEST(Check, ClippedSettingsAreAProblem) {
  EXPECT_THAT(checked("--order 500").said("order", "problem"),
              HasSubstr("500 is asked for and 200"));
  EXPECT_THAT(checked("--order 4.5").said("order", "problem"), HasSubstr("4.5 is asked for and 4"));
  EXPECT_THAT(checked("--stopband-attenuation 300").problems(),
              testing::Contains("stopband_attenuation"));
  EXPECT_THAT(checked("--order 5.0 --stopband-attenuation 96").problems(), IsEmpty());
}

TEST(Check, SettingsWithoutEffectAreNoted) {
  EXPECT_THAT(checked("--passband-ripple 1").said("passband_ripple", "note"),
              HasSubstr("a chebyshev-2 has none"));
  EXPECT_THAT(checked("--frequency 300 3400").said("cutoff", "note"),
              HasSubstr("3400 is not used"));
  EXPECT_EQ(checked("--stopband-attenuation 60").said("stopband_attenuation", "note"), "");
}

TEST(Check, AnEmptyCascadeIsAProblem) {
  const Checked verdict = checked("--zpk-output off");
  EXPECT_EQ(verdict.problems(), std::set<std::string>{"published"});
  EXPECT_THAT(verdict.said("published", "problem"), HasSubstr("--zpk-output on"));
  EXPECT_EQ(checked("--sos-output off").status, 0);
  EXPECT_THAT(checked("--sos-output off --zpk-output off").said("published", "problem"),
              HasSubstr("no form"));
}

TEST(Check, AGainTooSmallForANumberIsAProblem) {
  const Checked silent = checked("--topology butterworth --order 200 --frequency 24");
  EXPECT_EQ(silent.problems(), std::set<std::string>{"gain"});
  EXPECT_THAT(silent.said("gain", "problem"), HasSubstr("silent"));
  EXPECT_EQ(checked("--topology butterworth --order 50 --frequency 24").problems(),
            std::set<std::string>{});
}

TEST(Check, TellsWhetherFloatsAreEnough) {
  EXPECT_THAT(checked("").said("float", "fact"), HasSubstr("safe"));
  EXPECT_THAT(checked("--frequency 3").said("float", "note"), HasSubstr("not safe"));
  EXPECT_THAT(checked("--topology butterworth --order 30 --frequency 60").said("float", "note"),
              HasSubstr("too small for a float"));
}

TEST(Check, HighOrdersAreSoundInTheirSections) {
  for (const char *options :
       {"--topology chebyshev-1 --order 100 --frequency 2400",
        "--topology butterworth --response bandstop --order 64 --frequency 1200 3600",
        "--topology chebyshev-2 --response highpass --order 128 --frequency 240 "
        "--stopband-attenuation 240"})
    EXPECT_EQ(checked(options).problems(), std::set<std::string>{}) << options;
}

TEST_F(SavedCheck, WritesTheSameIntoAFile) {
  const Outcome outcome = veltane("check --frequency 24000 -o " + path("page"));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(read_file(path("page")), veltane("check --frequency 24000").out);
}

TEST_F(SavedCheck, ASavedDesignIsAsSoundAsTheNewOne) {
  veltane(
      "design --order 6 --response bandpass --frequency 300 3400 --tf-output on "
      "--passband-ripple 3 --format json -o " +
      path("band.json"));
  const Checked saved = checked(path("band.json"));
  const Checked fresh = checked("--from " + path("band.json"));
  EXPECT_EQ(saved.document["measured"], fresh.document["measured"]);
  EXPECT_EQ(saved.document["title"], fresh.document["title"]);
  EXPECT_EQ(fresh.said("passband_ripple", "note"), "") << "nobody typed it";
}

TEST_F(SavedCheck, ChangedCoefficientsAreFound) {
  veltane(
      "design --topology butterworth --order 4 --frequency 1000 --tf-output on --format json -o " +
      path("good.json"));
  const Json good = Json::parse(read_file(path("good.json")));
  ASSERT_EQ(checked(path("good.json")).status, 0);

  Json bad = good;
  bad["dictionary"]["cascade"][3] = good["dictionary"]["cascade"][3].get<double>() + 1e-4;
  const std::set<std::string> found = checked(write("bad.json", text_of(bad))).problems();
  EXPECT_TRUE(found.contains("sections") && found.contains("forms"));

  bad = good;
  bad["dictionary"]["cascade"][4] = 1.25;
  EXPECT_THAT(checked(write("bad.json", text_of(bad))).problems(), testing::Contains("stability"));

  bad = good;
  bad["dictionary"]["gain"] = nullptr;
  EXPECT_THAT(checked(write("bad.json", text_of(bad))).problems(), testing::Contains("numbers"));

  bad = good;
  bad["dictionary"]["cascade"].get_ref<Json::array_t &>().resize(5);
  EXPECT_THAT(checked(write("bad.json", text_of(bad))).problems(),
              testing::IsSupersetOf({"sections", "levels", "forms"}));

  bad = good;
  bad["dictionary"]["numerator"][0] = 1.0;
  EXPECT_EQ(checked(write("bad.json", text_of(bad))).problems(),
            std::set<std::string>{"transfer function"});
}

TEST_F(SavedCheck, WhatCannotBeCheckedIsRefused) {
  veltane("design --format json -o " + path("good.json"));
  const Json good = Json::parse(read_file(path("good.json")));
  const auto refused = [&](const std::string &arguments, const std::string &says) {
    const Outcome outcome = veltane("check " + arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, HasSubstr(says));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  };
  refused(path("good.json") + " --order 3", "designs anew");
  refused(path("none.json"), "cannot be read");
  refused("--frequency", "--frequency takes one or two values");
  refused("--format yaml", "--format is text or json");
  Json other = good;
  other.erase("dictionary");
  refused(write("bad.json", text_of(other)), "has no \"dictionary\"");
  other = good;
  other["dictionary"]["topology"] = "butterworth";
  refused(write("bad.json", text_of(other)), "coefficients of a butterworth");
  other = good;
  other["dictionary"]["cascade"].get_ref<Json::array_t &>().pop_back();
  refused(write("bad.json", text_of(other)), "'cascade' has 14 numbers");
  refused(write("bad.json", "{"), "is not JSON");
}
