// Command lines as tables of options.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

#include "../in_process.h"
#include "args/command_line.h"
#include "designer/refusal.h"

using cli::Option;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr std::array<std::string_view, 2> colours{"red", "blue"};
constexpr Option colour{.names = "-c,--colour", .value = "WORD", .help = "", .choices = colours};
constexpr Option size{.names = "--the-size",
                      .value = "NUMBER",
                      .help = "How large",
                      .most = 2,
                      .unit = cli::Unit::hertz};
constexpr Option many{.names = "--many", .value = "N...", .help = "", .most = Option::any_number};
constexpr Option loud{.names = "--loud", .help = "Loudly"};
constexpr std::array<std::string_view, 1> examples{"tool --loud"};

const cli::CommandLine line{.name = "tool",
                            .description = "Does it.",
                            .operand = "FILE",
                            .most_operands = 1,
                            .options = {&colour, &size, &many, &loud},
                            .examples = examples,
                            .notes = "A note.\n"};

cli::Arguments parsed(const std::string &words) {
  return cli::parse(line, tests::split(words)).value();
}

template <class Function>
std::string refusal(const Function &function) {
  try {
    function();
  } catch (const designer::Refusal &found) {
    return found.what();
  }
  return "";
}

std::string refused(const std::string &words) {
  return refusal([&] { parsed(words); });
}

}  // namespace

TEST(CommandLine, NamesMayHaveUnderscoresAndValuesMayNot) {
  EXPECT_THAT(parsed("--the_size a_b").values(size), ElementsAre("a_b"));
  EXPECT_THAT(parsed("--the-size=1_2").values(size), ElementsAre("1_2"));
}

TEST(CommandLine, CountsValues) {
  EXPECT_THAT(parsed("--the-size 1 2").values(size), ElementsAre("1", "2"));
  EXPECT_THAT(parsed("").values(size), IsEmpty());
  EXPECT_EQ(refusal([] { parsed("--the-size 1 2 3").values(size); }),
            "--the-size takes one or two values, and 3 were given");
  EXPECT_EQ(refusal([] { parsed("--many").values(many); }),
            "--many takes at least one value, and 0 were given");
  EXPECT_THAT(parsed("--many 1 2 3 --loud").values(many), ElementsAre("1", "2", "3"));
  EXPECT_EQ(refusal([] { parsed("-c red -c blue").value(colour); }),
            "--colour takes one value, and 2 were given");
}

TEST(CommandLine, TheFirstChoiceIsTheUsualOne) {
  EXPECT_EQ(parsed("").choice(colour), "red");
  EXPECT_EQ(parsed("-c blue").choice(colour), "blue");
  EXPECT_EQ(parsed("-c Blue").choice(colour), "blue");
  EXPECT_EQ(refusal([] { parsed("-c green").choice(colour); }),
            "--colour is red or blue, not 'green'");
  EXPECT_EQ(refusal([] { parsed("-c bleu"); }), "--colour cannot be 'bleu'; did you mean blue?");
}

TEST(CommandLine, ASwitchTakesNoValue) {
  EXPECT_TRUE(parsed("--loud").given(loud));
  EXPECT_FALSE(parsed("").given(loud));
  EXPECT_EQ(refused("--loud=yes"), "--loud takes no value");
}

TEST(CommandLine, TheOperandStandsAnywhere) {
  EXPECT_EQ(parsed("--loud").operand(), std::nullopt);
  for (const char *words :
       {"a.json --loud -c red", "--loud a.json -c red", "--loud -c red a.json",
        "--loud --colour=red a.json", "-cred a.json --loud", "--the-size 1 2 a.json --loud -c red",
        "--the_size 1 a.json --loud -c red", "--many 1 2 -c red a.json --loud"}) {
    const cli::Arguments arguments = parsed(words);
    EXPECT_EQ(arguments.operand(), "a.json") << words;
    EXPECT_EQ(arguments.value(colour), "red") << words;
    EXPECT_TRUE(arguments.given(loud)) << words;
  }
  EXPECT_EQ(parsed("- --loud").operand(), "-");
  EXPECT_EQ(parsed("--the-size -1 -").operand(), "-");
}

TEST(CommandLine, AValueIsNotTheOperand) {
  EXPECT_EQ(parsed("--many a b").operand(), std::nullopt);
  EXPECT_EQ(parsed("--the-size a.json").operand(), std::nullopt) << "a size has to come first";
  EXPECT_EQ(parsed("--the-size 1 2 3").operand(), std::nullopt) << "one size too many";
  EXPECT_EQ(parsed("-c a.json").operand(), std::nullopt);
  for (const char *number : {"3k", "2.5kHz", "300,3400", "-1e3", "inf"})
    EXPECT_EQ(parsed("--the-size 1 " + std::string(number)).operand(), std::nullopt) << number;
  EXPECT_EQ(parsed("--the-size 1 300.wav").operand(), "300.wav");
  EXPECT_EQ(parsed("--the-s 1 a.json").operand(), "a.json") << "the beginning of its name";
}

TEST(CommandLine, ThereIsOneOperand) {
  EXPECT_EQ(refused("--loud a.json b.json"),
            "unexpected 'b.json' beside 'a.json'; tool --help shows what it takes");
  EXPECT_THAT(refusal([] {
                cli::CommandLine without = line;
                without.operand = {};
                cli::parse(without, {"--loud", "a.json"});
              }),
              HasSubstr("unexpected 'a.json'"));
}

TEST(CommandLine, OperandsKeepTheirOrder) {
  cli::CommandLine two = line;
  two.most_operands = 2;
  const auto parsed = cli::parse(two, {"b.json", "--colour", "red", "a.wav", "--loud"});
  EXPECT_THAT(parsed->operands(), ElementsAre("b.json", "a.wav"));
  EXPECT_EQ(refusal([&] {
              cli::parse(two, {"a", "b", "c", "--loud"});
            }),
            "unexpected 'c' beside 'b'; tool --help shows what it takes");
}

TEST(CommandLine, UnknownOptionsAreAnsweredWithTheNearest) {
  EXPECT_EQ(refused("--color red"), "unknown option '--color'; did you mean --colour?");
  EXPECT_EQ(refused("--weight"), "unknown option '--weight'; tool --help lists the options");
}

TEST(CommandLine, TakesTheBeginningOfANameWhereItIsTheOnlyOne) {
  EXPECT_EQ(parsed("--col blue").value(colour), "blue");
  EXPECT_EQ(parsed("--colo=blue").value(colour), "blue");
  EXPECT_THAT(parsed("--the_s 1").values(size), ElementsAre("1"));
  EXPECT_FALSE(cli::parse(line, {"--he"}).has_value());
  EXPECT_THAT(refused("--c blue"), HasSubstr("unknown option '--c'")) << "too short to mean one";

  static constexpr Option near{.names = "--colours,--couleurs", .help = ""};
  cli::CommandLine two = line;
  two.options = {&colour, &near};
  const auto given = [&](const char *word) { return cli::parse(two, {word}).value(); };
  EXPECT_EQ(refusal([&] { given("--col"); }), "'--col' may be --colour or --colours");
  EXPECT_TRUE(given("--colours").given(near));
  EXPECT_TRUE(given("--cou").given(near)) << "a second name has beginnings, too";
  EXPECT_TRUE(given("--colour=red").given(colour)) << "a whole name is that";
}

TEST(CommandLine, HelpIsAskedForWithEitherName) {
  EXPECT_FALSE(cli::parse(line, {"--help"}).has_value());
  EXPECT_FALSE(cli::parse(line, {"--loud", "-h"}).has_value());
  const std::string help = cli::help(line);
  EXPECT_THAT(help, HasSubstr("Does it."));
  EXPECT_THAT(help, HasSubstr("--the-size NUMBER           How large"));
  EXPECT_THAT(help, HasSubstr("Examples:\n  tool --loud\n\nA note.\n"));
}
