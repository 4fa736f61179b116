// What `veltane check` says of a filter.

#include <nlohmann/json.hpp>
#include <set>

#include "../run_command.h"
#include "../scratch_folder.h"

using Json = nlohmann::ordered_json;
using testing::AllOf;
using testing::HasSubstr;
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

TEST(Check, ADocumentHasTheseKeys) {
  for (const char *options : {"", "--frequency 24000"}) {
    const Checked verdict = checked(options);
    std::vector<std::string> keys;
    for (const auto &[key, value] : verdict.document.items()) keys.push_back(key);
    EXPECT_THAT(
        keys, testing::ElementsAre("veltane", "command", "sound", "title", "findings", "measured"));
  }
}

TEST_F(SavedCheck, WritesTheSameIntoAFile) {
  const Outcome outcome = veltane("check --frequency 24000 -o " + path("page"));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(read_file(path("page")), veltane("check --frequency 24000").out);
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
  refused(write("bad.json", text_of(other)), "settings but no \"dictionary\"");
  other = good;
  other["dictionary"]["topology"] = "butterworth";
  refused(write("bad.json", text_of(other)), "coefficients of a butterworth");
  other = good;
  other["dictionary"]["cascade"].get_ref<Json::array_t &>().pop_back();
  refused(write("bad.json", text_of(other)), "'cascade' has 14 numbers");
  refused(write("bad.json", "{"), "is not JSON");
}

TEST(CheckOnATerminal, ShowsProblemsInColourUnlessAskedNotTo) {
  const auto page = [](const std::string &environment) {
    return run(environment + " script -qec '" VELTANE_COMMAND " check --frequency 24000' /dev/null")
        .out;
  };
  EXPECT_THAT(page("TERM=xterm"), HasSubstr("\033[1;31mPROBLEM\033[0m: cutoff"));
  EXPECT_THAT(page("TERM=xterm NO_COLOR=1"), testing::Not(HasSubstr("\033")));
  EXPECT_THAT(page("TERM=dumb"), testing::Not(HasSubstr("\033")));
  EXPECT_THAT(veltane("check --frequency 24000").out, testing::Not(HasSubstr("\033")));
}
