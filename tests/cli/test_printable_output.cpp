// Texts of others where the command shows them: in sentences, exported files, pictures.

#include "../hidden_texts.h"
#include "layouts/target.h"
#include "run_command.h"
#include "scratch_folder.h"
#include "text/printable.h"

using testing::HasSubstr;
using testing::Not;
using tests::hidden_texts;

namespace {

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

using HiddenTexts = ScratchFolder;

}  // namespace

TEST_F(HiddenTexts, NoneIsInASentence) {
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
TEST_F(HiddenTexts, NoneIsInAnExportedFile) {
  std::string all;
  for (const std::string &text : hidden_texts()) all += text + " ";
  for (const layouts::Target &target : layouts::targets()) {
    const Outcome outcome = veltane(std::string("export --for ") + target.name + " --name " +
                                    shell_word(all) + " --topology butterworth --order 3");
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
TEST_F(HiddenTexts, AreWrittenForTheShellSoThatItReadsThemBack) {
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

TEST_F(HiddenTexts, NoneIsInAPicture) {
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
