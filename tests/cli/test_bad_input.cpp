// Input that nobody should give, and some do. Whatever it is: one sentence on
// standard error that ends, nothing on standard output, no file, and status 2.

#include "run_command.h"
#include "scratch_folder.h"

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::string repeated(const std::string &text, int count) {
  std::string out;
  for (int i = 0; i < count; ++i) out += text;
  return out;
}

// Whatever a file given as a saved design holds.
struct BadFile {
  const char *what;
  std::string text;
  const char *says;
};

void PrintTo(const BadFile &file, std::ostream *out) { *out << file.what; }

class BadSavedDesign : public ScratchFolder, public testing::WithParamInterface<BadFile> {};
class BadLine : public ScratchFolder, public testing::WithParamInterface<BadFile> {};

// Arguments as words of the shell.
struct BadWords {
  const char *what;
  const char *words;
  const char *says;
};

void PrintTo(const BadWords &words, std::ostream *out) { *out << words.what; }

class BadArguments : public ScratchFolder, public testing::WithParamInterface<BadWords> {};

void expect_one_sentence(const Outcome &outcome, int status) {
  EXPECT_EQ(outcome.status, status);
  EXPECT_EQ(outcome.out, "");
  EXPECT_TRUE(outcome.err.starts_with("veltane: ")) << outcome.err;
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
  EXPECT_LT(outcome.err.size(), 600U);
  EXPECT_EQ(outcome.err.find('\0'), std::string::npos);
}

std::string settings(const std::string &text) { return "{\"settings\": " + text + "}"; }

const std::vector<BadFile> &bad_json() {
  using namespace std::string_literals;
  static const std::vector<BadFile> list{
      {"empty", "", "is not JSON"},
      {"space", " \t ", "is not JSON"},
      {"a word", "order", "is not JSON"},
      {"cut off", "{\"order\": ", "is not JSON"},
      {"single quotes", "{'order': 4}", "is not JSON"},
      {"a comma too many", "{\"order\": 4,}", "is not JSON"},
      {"no quotes", "{order: 4}", "is not JSON"},
      {"two documents", "{} {}", "is not JSON"},
      {"a comment", "{} // settings", "is not JSON"},
      {"NaN", "{\"order\": NaN}", "is not JSON"},
      {"a NUL byte", "{\"order\"\0: 4}"s, "is not JSON"},
      {"only NUL bytes", std::string(1000, '\0'), "is not JSON"},
      {"no UTF-8", "{\"name\": \"\xff\xfe\"}", "is not JSON"},
      {"a program",
       "\x7f"
       "ELF\x02\x01\x01",
       "is not JSON"},
      {"a number that is none of the machine's", "{\"order\": 1e999}", "is not JSON"},
      {"nested lists", repeated("[", 100000), "nests deeper than 16 levels"},
      {"nested objects", repeated("{\"a\":", 100000), "nests deeper than 16 levels"},
      {"a key twice", "{\"order\": 3, \"order\": 4}", "has 'order' twice"}};
  return list;
}

const std::vector<BadFile> &bad_settings() {
  static const std::vector<BadFile> list{
      {"a list", "[]", "not an object of settings"},
      {"a number", "4", "not an object of settings"},
      {"null", "null", "not an object of settings"},
      {"an unknown key", "{\"ordr\": 4}", "there is no setting 'ordr'"},
      {"an empty key", "{\"\": 4}", "there is no setting ''"},
      {"a key with a newline", "{\"a\\nb\": 4}", "there is no setting 'a"},
      {"a key twice in two spellings", "{\"tf-output\": 1, \"tf_output\": 0}",
       "has 'tf_output' twice"},
      {"null for a value", "{\"order\": null}", "order takes a number, a text, true or false"},
      {"an object for a value", "{\"order\": {}}", "order takes a number, a text, true or false"},
      {"a list in a list", "{\"frequency\": [[1]]}", "frequency takes a number"},
      {"no value", "{\"frequency\": []}", "frequency takes one or two values, and 0 were given"},
      {"three cutoffs", "{\"frequency\": [1, 2, 3]}", "and 3 were given"},
      {"a list for one value", "{\"order\": [4, 5]}", "order takes one value, and 2 were given"},
      {"a word for a number", "{\"order\": \"four\"}", "'order' takes an integer, not 'four'"},
      {"true for a number", "{\"order\": true}", "'order' takes an integer, not 'true'"},
      {"a number for a word", "{\"topology\": 3}", "topology cannot be '3'"},
      {"a number for a switch", "{\"tf_output\": 2}", "tf_output is on or off, not '2'"},
      {"an empty text", "{\"topology\": \"\"}", "topology cannot be ''"},
      {"a NUL in a text", "{\"name\": \"a\\u0000b\"}", "name cannot be 'a"},
      {"a very long text", "{\"topology\": \"" + std::string(500000, 'x') + "\"}",
       "butterworth, chebyshev-1, chebyshev-2"},
      {"one cutoff for a band", "{\"response\": \"bandpass\", \"frequency\": 300}",
       "a bandpass has two cutoffs"}};
  return list;
}

}  // namespace

TEST_P(BadSavedDesign, IsRefusedWithOneSentence) {
  const auto file = write("saved.json", GetParam().text);
  const Outcome outcome = veltane("design --from " + file + " -o " + path("out"));
  expect_one_sentence(outcome, 2);
  EXPECT_THAT(outcome.err, HasSubstr(GetParam().says));
  EXPECT_FALSE(std::filesystem::exists(path("out")));
}

INSTANTIATE_TEST_SUITE_P(Json, BadSavedDesign, testing::ValuesIn(bad_json()));

INSTANTIATE_TEST_SUITE_P(Settings, BadSavedDesign, testing::ValuesIn([] {
                           std::vector<BadFile> list = bad_settings();
                           for (BadFile &file : list) file.text = settings(file.text);
                           return list;
                         }()));

INSTANTIATE_TEST_SUITE_P(
    Document, BadSavedDesign,
    testing::Values(
        BadFile{"a list", "[1, 2]", "has no \"settings\""},
        BadFile{"settings without their document", "{\"order\": 4}", "has no \"settings\""},
        BadFile{"a list for the dictionary", "{\"settings\": {}, \"dictionary\": []}",
                "a dictionary that is not an object"},
        BadFile{"an object in the dictionary", "{\"settings\": {}, \"dictionary\": {\"gain\": {}}}",
                "'gain' of"},
        BadFile{"a text in a list of the dictionary",
                "{\"settings\": {}, \"dictionary\": {\"poles\": [1, \"2\"]}}", "'poles' of"}));

class LargeFile : public ScratchFolder {};

// Not a parameter, which each of these tests would build anew when it begins.
TEST_F(LargeFile, IsRefusedFrom64MebibytesOn) {
  const auto refused = [&](std::size_t size) {
    return veltane("design --from " + write("saved.json", std::string(size, ' '))).err;
  };
  EXPECT_THAT(refused(std::size_t{64} << 20U), HasSubstr("is not JSON"));
  EXPECT_THAT(refused((std::size_t{64} << 20U) + 1), HasSubstr("is larger than 64 MiB"));
}

TEST_P(BadLine, IsAnErrorAndTheNextIsDesigned) {
  const auto file = write("lines", GetParam().text + "\n{\"order\": 3}\n");
  const Outcome outcome = veltane("design --batch " + file);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.out.starts_with("{\"line\": 1, \"error\": \"")) << outcome.out;
  const std::string error = outcome.out.substr(0, outcome.out.find('\n'));
  EXPECT_LT(error.size(), 700U);
  EXPECT_THAT(outcome.out, HasSubstr("\n{\"line\": 2, \"veltane\": "));
}

INSTANTIATE_TEST_SUITE_P(Json, BadLine, testing::ValuesIn(bad_json()));
INSTANTIATE_TEST_SUITE_P(Settings, BadLine, testing::ValuesIn(bad_settings()));

TEST_P(BadArguments, AreRefusedWithOneSentence) {
  write("empty", "");
  const Outcome outcome = run("cd " + path(".") + " && " VELTANE_COMMAND " " + GetParam().words);
  expect_one_sentence(outcome, 2);
  EXPECT_THAT(outcome.err, HasSubstr(GetParam().says));
  EXPECT_EQ(names().size(), 1U);
}

#define HUGE_WORD "$(head -c 120000 /dev/zero | tr '\\0' x)"
#define MEGABYTE                                                                      \
  " " HUGE_WORD " " HUGE_WORD " " HUGE_WORD " " HUGE_WORD " " HUGE_WORD " " HUGE_WORD \
  " " HUGE_WORD " " HUGE_WORD " " HUGE_WORD

INSTANTIATE_TEST_SUITE_P(
    Command, BadArguments,
    testing::Values(
        BadWords{"an empty word", "''", "unknown subcommand ''"},
        BadWords{"a space", "' '", "unknown subcommand ' '"},
        BadWords{"a dash", "-", "unknown option '-'"},
        BadWords{"two dashes", "--", "needs a subcommand"},
        BadWords{"a newline", "\"$(printf 'a\\nb')\"", "unknown subcommand 'a\\x0ab'"},
        BadWords{"escapes of a terminal", "\"$(printf 'a\\033[31mb')\"",
                 "unknown subcommand 'a\\x1b[31mb'"},
        BadWords{"the subcommand twice", "design design", "unexpected 'design'"},
        BadWords{"a subcommand of 120 kB", HUGE_WORD, "it is one of design"},
        BadWords{"a megabyte of words", "design" MEGABYTE, "veltane design --help shows"},
        BadWords{"a megabyte of values", "design --order" MEGABYTE,
                 "--order takes one value, and 9 were given"},
        BadWords{"a megabyte of cutoffs", "design --frequency" MEGABYTE, "and 9 were given"},
        BadWords{"a name of 120 kB for a family", "design --topology " HUGE_WORD,
                 "butterworth, chebyshev-1, chebyshev-2"},
        BadWords{"a file's name of 120 kB", "design --from " HUGE_WORD, "cannot be read"},
        BadWords{"10000 options", "design $(yes -- --order=3 | head -10000)",
                 "and 10000 were given"},
        BadWords{"--from twice", "design --from a --from b", "--from takes one value"},
        BadWords{"--from of nothing", "design --from", "--from takes one value, and 0 were given"},
        BadWords{"--output twice", "design -o a -o b", "--output takes one value"},
        BadWords{"--output of nothing", "design -o", "--output takes one value"},
        BadWords{"--batch twice", "design --batch a --batch b", "--batch takes one value"},
        BadWords{"--format twice", "design --format json --format json", "--format takes one"},
        BadWords{"a saved design that is missing", "design --from missing.json",
                 "'missing.json' cannot be read: No such file"},
        BadWords{"a folder for a saved design", "design --from .", "'.' cannot be read"},
        BadWords{"an endless file", "design --from /dev/zero", "is larger than 64 MiB"},
        BadWords{"an empty file", "design --from empty", "'empty' is not JSON"},
        BadWords{"an unreadable file", "design --from /proc/self/mem", "cannot be read"},
        BadWords{"nothing on standard input", "design --from - </dev/null", "'-' is not JSON"},
        BadWords{"a closed standard input", "design --from - <&-", "'-' cannot be read"},
        BadWords{"lines that are missing", "design --batch missing -o out",
                 "'missing' cannot be read: No such file"},
        BadWords{"a folder for lines", "design --batch . -o out", "'.' cannot be read"},
        BadWords{"a batch into a folder", "design --batch empty -o .", "is a folder"},
        BadWords{"an empty name for the output", "design -o ''", "--output takes one value"},
        BadWords{"an output in a file", "design -o empty/out", "there is no folder 'empty'"}));
