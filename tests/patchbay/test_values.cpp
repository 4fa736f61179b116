// Values as text, and text as values.

#include <bit>
#include <cmath>
#include <limits>
#include <random>

#include "host_test.h"

namespace tests {
namespace {

using patchbay::parse_line;
using patchbay::to_text;
using patchbay::Value;

TEST(ParseLine, SplitsWords) {
  EXPECT_EQ(parse_line(""), Values{});
  EXPECT_EQ(parse_line(" \t\n"), Values{});
  EXPECT_EQ(parse_line("one two  three\tfour\n"), (Values{"one", "two", "three", "four"}));
}

TEST(ParseLine, TellsIntegersFromNumbers) {
  EXPECT_EQ(parse_line("0 42 -7 +7"), (Values{0, 42, -7, 7}));
  EXPECT_EQ(parse_line("0.0 4.5 -0.25 +0.25 1e3 1E-3 .5 5. -.5"),
            (Values{0.0, 4.5, -0.25, 0.25, 1000.0, 0.001, 0.5, 5.0, -0.5}));
  EXPECT_EQ(parse_line("9223372036854775807 -9223372036854775808"),
            (Values{std::numeric_limits<t_long>::max(), std::numeric_limits<t_long>::min()}));
  EXPECT_EQ(parse_line("9223372036854775808"), Values{9223372036854775808.0});
}

// Decimal numbers on both sides of what decides to which double they are rounded.
TEST(ParseLine, RoundsToTheNearestDouble) {
  const std::pair<const char *, double> cases[] = {
      {"9007199254740993.0", 9007199254740992.0},
      {"9007199254740993.00000000000000000000000000001", 9007199254740994.0},
      {"9007199254740995.0", 9007199254740996.0},
      {"0.1000000000000000055511151231257827021181583404541015625", 0.1},
      {"2.2250738585072011e-308", 0x0.fffffffffffffp-1022},
      {"1.7976931348623157e308", std::numeric_limits<double>::max()},
      {"1.7976931348623158e308", std::numeric_limits<double>::max()},
      {"2.4703282292062328e-324", std::numeric_limits<double>::denorm_min()},
      {"0e-999", 0.0},
      {"0.000E999", 0.0},
      {"-0.0", -0.0}};
  for (const auto &[word, number] : cases) {
    const Values read = parse_line(word);
    ASSERT_TRUE(read.size() == 1 && std::holds_alternative<double>(read[0])) << word;
    EXPECT_EQ(std::get<double>(read[0]), number) << word;
    EXPECT_EQ(std::signbit(std::get<double>(read[0])), std::signbit(number)) << word;
  }
}

TEST(ParseLine, TakesWhatIsBeyondTheDoublesAsASymbol) {
  for (const char *word : {"1e999", "-1e999", "1.7976931348623159e308", "1e-999", "-1e-999",
                           "2.4703282292062327e-324", "0.01e-400"})
    EXPECT_EQ(parse_line(word), Values{word}) << word;
}

TEST(ParseLine, ReadsEveryNumberBack) {
  std::mt19937_64 random(20);
  for (int i = 0; i < 10000; ++i) {
    const double number = std::bit_cast<double>(random());
    if (!std::isfinite(number)) continue;
    const Values read = parse_line(to_text(number));
    ASSERT_EQ(read.size(), 1U);
    const auto *whole = std::get_if<t_long>(&read[0]);
    ASSERT_EQ(whole != nullptr ? static_cast<double>(*whole) : std::get<double>(read[0]), number);
  }
}

TEST(ParseLine, TakesAllElseAsSymbols) {
  for (const char *word : {"inf", "nan", "-inf", "+nan", "infinity", "-", "+", ".", "-.", "1.2.3",
                           "12a", "0x10", "1e", "--5", "1,5", "order:", "4:", "-+5", "e5"})
    EXPECT_EQ(parse_line(word), Values{word}) << word;
}

TEST(ParseLine, TakesTwoSignsAsASymbol) { EXPECT_EQ(parse_line("+-5"), Values{"+-5"}); }

TEST(ParseLine, MakesOneSymbolOfWhatQuotesEnclose) {
  EXPECT_EQ(parse_line("\"two words\" one"), (Values{"two words", "one"}));
  EXPECT_EQ(parse_line("\"42\" \"\" \" \""), (Values{"42", "", " "}));
  EXPECT_EQ(parse_line("label: \"a  b\""), (Values{"label:", "a  b"}));
}

TEST(ParseLine, WantsQuotesClosed) {
  for (const char *line : {"\"", "a \"b", "\"a\" \"b"})
    EXPECT_THAT(refusal([&] { parse_line(line); }), AllOf(HasSubstr("quote"), HasSubstr(line)));
}

TEST(ToText, WritesIntegersAndSymbols) {
  EXPECT_EQ(to_text(Value{t_long{-12}}), "-12");
  EXPECT_EQ(to_text(Value{"word"}), "word");
  EXPECT_EQ(to_text(Value{std::numeric_limits<t_long>::min()}), "-9223372036854775808");
}

TEST(ToText, WritesNumbersWithTheFewestDigits) {
  EXPECT_EQ(to_text(0.1), "0.1");
  EXPECT_EQ(to_text(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(to_text(-2.5), "-2.5");
  EXPECT_LE(to_text(1e300).size(), std::string("1e+300").size());
}

TEST(ToText, WritesNumbersThatReadBackToTheSame) {
  for (const double value :
       {0.0, 1.0, 1.0 / 3.0, 1e15, 1e16, 1e22, 123456789.125, 5e-324, 1.7976931348623157e308,
        2.2250738585072014e-308, 9007199254740993.0, 1e-7, -4.9e-5}) {
    const Values read = parse_line(to_text(value));
    ASSERT_THAT(read, SizeIs(1)) << to_text(value);
    ASSERT_FALSE(std::holds_alternative<std::string>(read[0])) << to_text(value);
    const auto *integer = std::get_if<t_long>(&read[0]);
    const double again =
        integer != nullptr ? static_cast<double>(*integer) : std::get<double>(read[0]);
    EXPECT_EQ(again, value);
  }
}

TEST(ToText, KeepsTheSignOfZero) {
  const Values read = parse_line(to_text(-0.0));
  ASSERT_TRUE(std::holds_alternative<double>(read.at(0))) << "no integer has a negative zero";
  EXPECT_TRUE(std::signbit(std::get<double>(read[0])));
}

}  // namespace
}  // namespace tests
