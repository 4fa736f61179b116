// Texts of others as they are shown: in sentences, comments of exported files, pictures, JSON.

#include <nlohmann/json.hpp>

#include "export/export.h"
#include "json_text.h"
#include "run_command.h"
#include "scratch_folder.h"
#include "text/printable.h"

using text::shortened;
using text::printable;
using testing::HasSubstr;
using testing::Not;

namespace {

std::string utf8(char32_t code) {
  const auto tail = [&](unsigned shift) {
    return static_cast<char>(0x80U | (static_cast<unsigned>(code >> shift) & 0x3fU));
  };
  if (code < 0x80) return {static_cast<char>(code)};
  if (code < 0x800) return {static_cast<char>(0xc0U | code >> 6U), tail(0)};
  if (code < 0x10000) return {static_cast<char>(0xe0U | code >> 12U), tail(6), tail(0)};
  return {static_cast<char>(0xf0U | code >> 18U), tail(12), tail(6), tail(0)};
}

bool is_shown(char32_t code) { return text::printable("a" + utf8(code) + "b") == "a" + utf8(code) + "b"; }

const std::vector<std::string> &hidden_characters() {
  static const std::vector<std::string> list{"\x01",   "\x1b[2J", "\n",     "\t",     "\x7f",
                                             "\u0080", "\u0085",  "\u009b", "\u061c", "\u200e",
                                             "\u200f", "\u2028",  "\u2029", "\u202a", "\u202e",
                                             "\u2066", "\u2069",  "\ufffe", "\uffff", "]]>"};
  return list;
}

// What no place may get, each in the middle of a word.
std::vector<std::string> hidden_texts() {
  std::vector<std::string> list = hidden_characters();
  list.insert(list.end(), {"\xff", "\xc3", "\xe2\x80", "\xc0\xaf", "\x80", "\xed\xa0\x80"});
  return list;
}

// A word of the shell that holds the bytes.
std::string shell_word(const std::string &bytes) {
  std::string word = "\"$(printf '";
  char octal[5];
  for (const char c : "x" + bytes + "y") {
    std::snprintf(octal, sizeof octal, "\\%03o", static_cast<unsigned char>(c));
    word += octal;
  }
  return word + "')\"";
}

using VisibleTexts = ScratchFolder;

}  // namespace

// Every character of the Basic Multilingual Plane, and those at the ends of the others.
TEST(Visible, HidesTheseCharactersAndNoOthers) {
  const auto hidden = [](char32_t code) {
    return code < 0x20 || (code >= 0x7f && code <= 0x9f) || code == 0x061c || code == 0x200e ||
           code == 0x200f || (code >= 0x2028 && code <= 0x202e) ||
           (code >= 0x2066 && code <= 0x2069) || code == 0xfffe || code == 0xffff;
  };
  for (char32_t code = 0; code < 0x10000; ++code) {
    if (code >= 0xd800 && code <= 0xdfff) continue;
    EXPECT_EQ(is_shown(code), !hidden(code)) << std::hex << static_cast<unsigned>(code);
  }
  for (const char32_t code : {0x10000U, 0x1f600U, 0x10ffffU}) EXPECT_TRUE(is_shown(code));
}

TEST(Visible, WritesWhatItHidesAsItsCode) {
  EXPECT_EQ(text::printable("a\n\x1b\x7f z"), "a\\x0a\\x1b\\x7f z");
  EXPECT_EQ(text::printable(std::string(1, '\0')), "\\x00");
  EXPECT_EQ(text::printable("\u0085\u2028\u202e"), "\\u0085\\u2028\\u202e");
  EXPECT_EQ(text::printable("]]>"), "]]\\x3e");
  EXPECT_EQ(text::printable("]>, ]]x>, >"), "]>, ]]x>, >");
  EXPECT_EQ(text::printable(text::printable("\xff\u2028]]>")), text::printable("\xff\u2028]]>"));
}

TEST(Visible, ReplacesBytesThatAreNoUtf8) {
  EXPECT_EQ(text::printable("\xff"), "\\xff");
  EXPECT_EQ(text::printable("\xc3("), "\\xc3(");
  EXPECT_EQ(text::printable("\xe2\x80"), "\\xe2\\x80") << "cut off";
  EXPECT_EQ(text::printable("\xc0\xaf"), "\\xc0\\xaf") << "overlong";
  EXPECT_EQ(text::printable("\xe0\x9f\xbf"), "\\xe0\\x9f\\xbf") << "overlong";
  EXPECT_EQ(text::printable("\xe0\xa0\x80"), "\xe0\xa0\x80");
  EXPECT_EQ(text::printable("\xf0\x8f\xbf\xbf"), "\\xf0\\x8f\\xbf\\xbf") << "overlong";
  EXPECT_EQ(text::printable("\xed\xa0\x80"), "\\xed\\xa0\\x80") << "a surrogate";
  EXPECT_EQ(text::printable("\xed\xbf\xbf"), "\\xed\\xbf\\xbf") << "a surrogate";
  EXPECT_EQ(text::printable("\xf4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80") << "beyond the last character";
  EXPECT_EQ(text::printable("\xf5\x80\x80\x80"), "\\xf5\\x80\\x80\\x80");
}

// Characters of one to four bytes, cut at every place.
TEST(Shortened, CutsNoCharacter) {
  const std::string text = "a\u00e9\u20ac\U0001f600b\u00e9\u20ac\U0001f600c";
  for (std::size_t head = 0; head < text.size(); ++head)
    for (std::size_t tail = 0; head + tail < text.size(); ++tail) {
      const std::string cut = text::shortened(text, head, tail, "|");
      EXPECT_EQ(text::printable(cut), cut) << head << ' ' << tail;
      EXPECT_LE(cut.size(), text.size());
      if (cut == text) continue;
      const std::size_t mark = cut.find('|');
      EXPECT_LE(mark, head);
      EXPECT_GT(mark + 4, head) << "no more is left out than the cut character";
      EXPECT_LE(cut.size() - mark - 1, tail);
      EXPECT_GT(cut.size() - mark - 1 + 4, tail);
      EXPECT_TRUE(text.starts_with(cut.substr(0, mark)) && text.ends_with(cut.substr(mark + 1)));
    }
}

TEST(Shortened, LeavesWhatFits) {
  EXPECT_EQ(text::shortened("123456789", 3, 3, "..."), "123456789");
  EXPECT_EQ(text::shortened("1234567890", 3, 3, "..."), "123...890");
}

TEST(JsonText, EscapesWhatIsHiddenAndKeepsTheValue) {
  for (const std::string &text : hidden_texts()) {
    const std::string json = cli::json_text("x" + text + "y");
    EXPECT_EQ(text::printable(json), json);
  }
  for (const std::string &text : hidden_characters())
    EXPECT_EQ(cli::Json::parse(cli::json_text("x" + text + "y")), "x" + text + "y");
  EXPECT_EQ(cli::json_text("\u00e9]]>\u2028"), "\"\u00e9]]\\u003e\\u2028\"");
}

// Wherever the text stands, and as many lines as without it.
TEST(ExportComment, HidesNothing) {
  const auto lines = [](const std::string &text) {
    cli::Export filter{};
    filter.title = "title " + text;
    filter.gain = {"gain " + text};
    filter.remarks = {"remark " + text};
    std::istringstream comment(cli::comment(filter, "// ", {"layout " + text}));
    cli::Words list;
    for (std::string line; std::getline(comment, line);) list.push_back(line);
    return list;
  };
  for (const std::string &text : hidden_texts()) {
    EXPECT_EQ(lines(text).size(), lines("plain").size());
    for (const std::string &line : lines(text)) EXPECT_EQ(text::printable(line), line);
  }
}

TEST_F(VisibleTexts, NoneIsInASentence) {
  for (const std::string &text : hidden_texts()) {
    const Outcome outcome = veltane("design --topology " + shell_word(text));
    EXPECT_EQ(outcome.status, 2);
    ASSERT_TRUE(outcome.err.ends_with('\n'));
    const std::string sentence = outcome.err.substr(0, outcome.err.size() - 1);
    EXPECT_EQ(text::printable(sentence), sentence);
    EXPECT_THAT(sentence, HasSubstr("\\"));
  }
}

// One word with all of them.
TEST_F(VisibleTexts, NoneIsInAnExportedFile) {
  std::string all;
  for (const std::string &text : hidden_texts()) all += text + " ";
  for (const cli::Target &target : cli::targets()) {
    const Outcome outcome = veltane(std::string("export --for ") + target.name + " --name " +
                                    shell_word(all) + " --order 3");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::string lines = outcome.out;
    lines.erase(std::remove(lines.begin(), lines.end(), '\n'), lines.end());
    EXPECT_EQ(text::printable(lines), lines) << target.name;
    if (std::string(target.name) == "json") continue;
    std::istringstream file(outcome.out);
    for (std::string line; std::getline(file, line);)
      if (line.find("--name") != std::string::npos) {
        EXPECT_THAT(line, HasSubstr("\\xe2\\x80\\xa8")) << target.name;
      }
  }
}

// The line in a comment makes the file again, whatever the name.
TEST_F(VisibleTexts, AreWrittenForTheShellSoThatItReadsThemBack) {
  for (const std::string text : {"\u2028alert(1)", "]]>", "\x01", "'\u202e\\'"}) {
    const Outcome first = veltane("export --for csv --name " + shell_word(text));
    ASSERT_EQ(first.status, 0) << first.err;
    const std::string mark = "# Made by: veltane ";
    const std::size_t begin = first.out.find(mark) + mark.size();
    const std::string line = first.out.substr(begin, first.out.find('\n', begin) - begin);
    std::ofstream(path("again")) << VELTANE_COMMAND << ' ' << line << '\n';
    EXPECT_EQ(run("bash " + path("again")).out, first.out) << line;
  }
}

TEST_F(VisibleTexts, NoneIsInAPicture) {
  std::string all;
  for (const std::string &text : hidden_texts()) all += text + " ";
  for (const char *ending : {"svg", "png"}) {
    const Outcome outcome = veltane("plot --title " + shell_word(all.substr(0, 40)) + " --name " +
                                    shell_word(all) + " -o " + path(std::string("a.") + ending));
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const std::string picture = read_file(path(std::string("a.") + ending));
    for (const char *text : {"\u2028", "\u2029", "\u202e", "\u2066", "\uffff", "]]>"})
      EXPECT_THAT(picture, Not(HasSubstr(text)));
    EXPECT_THAT(picture, HasSubstr("\\xe2\\x80\\xa8"));
  }
  std::string svg = read_file(path("a.svg"));
  svg.erase(std::remove_if(svg.begin(), svg.end(), [](char c) { return c == '\n' || c == '\t'; }),
            svg.end());
  EXPECT_EQ(text::printable(svg), svg);
  EXPECT_EQ(run("/usr/bin/python3 -c 'import sys, xml.dom.minidom; "
                "xml.dom.minidom.parse(sys.argv[1])' " +
                path("a.svg"))
                .status,
            0);
}
