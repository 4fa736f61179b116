#include "comment.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sstream>

#include "text/printable.h"

using layouts::ExportedFilter;
using layouts::Feedback;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::vector<std::string> lines_of(const std::string &text) {
  std::vector<std::string> lines;
  std::istringstream file(text);
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

// What may not be shown: characters that move a cursor, end a line, turn the direction of writing
// or end a section of XML, and bytes that are not UTF-8.
const std::vector<std::string> hidden{
    "\x01",   "\x1b[2J",  "\n",       "\t",     "\x7f",        "\u0080", "\u0085",
    "\u009b", "\u061c",   "\u200e",   "\u200f", "\u2028",      "\u2029", "\u202a",
    "\u202e", "\u2066",   "\u2069",   "\ufffe", "\uffff",      "]]>",    "\xff",
    "\xc3",   "\xe2\x80", "\xc0\xaf", "\x80",   "\xed\xa0\x80"};

// A filter whose texts all hold some words of others.
ExportedFilter saying(const std::string &words) {
  ExportedFilter filter;
  filter.title = "title " + words;
  filter.samplerate = 44100.0;
  filter.identifier = "veltane_filter";
  filter.command = {"veltane", "export", "--name", words};
  filter.scaling = {"scaling " + words};
  filter.remarks = {"remark " + words};
  filter.sections = {{1.0, 0.0, 0.0, 0.0, 0.0}};
  return filter;
}

}  // namespace

TEST(Comment, SaysWhatTheFileHolds) {
  EXPECT_THAT(lines_of(layouts::comment(saying("a b"), "# ", {"usage"})),
              ElementsAre("# title a b", "#", "# usage",
                          "# Sample rate: 44100 Hz. At any other rate, all frequencies "
                          "scale in proportion.",
                          "# scaling a b", "# Note: remark a b.",
                          "# Made by: veltane export --name 'a b'"));
}

TEST(Comment, SaysTheSignOfTheFeedback) {
  EXPECT_THAT(layouts::equation(Feedback::subtracted),
              testing::Contains(HasSubstr("- a1 y[n-1] - a2 y[n-2]")));
  EXPECT_THAT(layouts::equation(Feedback::subtracted), testing::Contains(HasSubstr("subtracted")));
  EXPECT_THAT(layouts::equation(Feedback::added),
              testing::Contains(HasSubstr("+ (-a1) y[n-1] + (-a2) y[n-2]")));
  EXPECT_THAT(layouts::equation(Feedback::added), testing::Contains(HasSubstr("are added")));
}

// Wherever the text stands, and in as many lines as without it.
TEST(Comment, HidesNothing) {
  const auto lines = [](const std::string &words) {
    return lines_of(layouts::comment(saying(words), "// ", {"usage " + words}));
  };
  for (const std::string &words : hidden) {
    EXPECT_EQ(lines(words).size(), lines("plain").size());
    for (const std::string &line : lines(words)) EXPECT_EQ(text::printable(line), line);
  }
}

TEST(Comment, NoTargetHidesAnything) {
  for (const layouts::Target &target : layouts::targets())
    for (const std::string &words : hidden) {
      const std::vector<std::string> lines = lines_of(target.write(saying(words)));
      EXPECT_EQ(lines.size(), lines_of(target.write(saying("plain"))).size()) << target.name;
      for (const std::string &line : lines) EXPECT_EQ(text::printable(line), line) << target.name;
    }
}

TEST(Comment, JsonKeepsTheWords) {
  const std::string words = "\u2028 \u202e ]]> \x1b";
  const auto document = nlohmann::json::parse(layouts::target_named("json").write(saying(words)));
  EXPECT_EQ(document["filter"], "title " + words);
  EXPECT_EQ(document["command"][3], words);
  EXPECT_EQ(document["gain"][0], "scaling " + words);
  EXPECT_EQ(document["notes"][0], "remark " + words);
}
