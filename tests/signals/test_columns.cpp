// Columns of numbers, read and written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files.h"
#include "signals/column_reader.h"
#include "signals/column_writer.h"

using signals::ColumnReader;
using signals::ColumnWriter;
using signals::RestOfText;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Names = std::vector<std::string>;

std::vector<double> numbers(const std::string &text, const Names &columns = {}) {
  const tests::TemporaryFile file(text);
  ColumnReader reader(file.descriptor(), "'it'", columns, RestOfText::dropped);
  std::vector<double> all, block(3 * reader.channels());
  for (std::size_t count = reader.read(block); count > 0; count = reader.read(block))
    all.insert(all.end(), block.begin(),
               block.begin() + static_cast<std::ptrdiff_t>(count * reader.channels()));
  return all;
}

// The text with its numbers doubled.
std::string doubled(const std::string &text, const Names &columns = {}) {
  const tests::TemporaryFile file(text);
  ColumnReader reader(file.descriptor(), "'it'", columns, RestOfText::kept);
  std::string out;
  ColumnWriter writer(
      [&](std::string_view part) {
        out += part;
        return true;
      },
      reader);
  std::vector<double> block(2 * reader.channels());
  for (std::size_t count = reader.read(block); count > 0; count = reader.read(block)) {
    for (double &number : block) number *= 2.0;
    writer.write(std::span(block).first(count * reader.channels()));
  }
  writer.finish();
  return out;
}

std::string refused(const std::string &text, const Names &columns = {}) {
  return tests::refusal([&] { numbers(text, columns); });
}

}  // namespace

TEST(Columns, OneIsReadAsItIs) {
  EXPECT_THAT(numbers("1\n-2.5\n+3e-2\n"), ElementsAre(1, -2.5, 0.03));
  EXPECT_THAT(numbers("1\n2"), ElementsAre(1, 2)) << "without a newline at the end";
  EXPECT_THAT(numbers("# a comment\n\nvolts\r\n1\r\n% one more\n2\r\n\n"), ElementsAre(1, 2));
  EXPECT_THAT(numbers("\xEF\xBB\xBF"
                      "1\n2\n"),
              ElementsAre(1, 2));
}

TEST(Columns, AnyDelimiterSeparates) {
  for (const char *text : {"1,2\n3,4\n", "1;2\n3;4\n", "1\t2\n3\t4\n", "1 2\n 3    4\n"}) {
    EXPECT_THAT(numbers(text, {"all"}), ElementsAre(1, 2, 3, 4)) << text;
    EXPECT_THAT(numbers(text, {"2"}), ElementsAre(2, 4)) << text;
    EXPECT_THAT(numbers(text, {"2", "1"}), ElementsAre(2, 1, 4, 3)) << text;
  }
}

TEST(Columns, AreChosenByNameOrNumber) {
  const std::string text = "time,\"a, b\",2\n0,1,x\n0.1,2,y\n";
  EXPECT_THAT(numbers(text, {"a, b"}), ElementsAre(1, 2));
  EXPECT_THAT(numbers(text, {"time", "2"}), ElementsAre(0, 1, 0.1, 2))
      << "a number is a place, also where a column has its name";
  EXPECT_THAT(refused(text), HasSubstr("'it' has 3 columns (time, a, b, 2); --column says which"));
  EXPECT_THAT(refused(text, {"volts"}), HasSubstr("no column 'volts'; its columns are 1 to 3"));
  for (const char *number : {"0", "4", "1.5", "-1"})
    EXPECT_THAT(refused(text, {number}), HasSubstr("no column")) << number;
  EXPECT_THAT(refused(text, {"2", "a, b"}), HasSubstr("column 2 twice"));
}

TEST(Columns, WhatIsNoNumberIsRefusedWithItsPlace) {
  EXPECT_EQ(refused("1\nx\n"), "line 2, column 1 of 'it' is 'x', which is not a number");
  EXPECT_THAT(refused("a\nb\n1\n"), HasSubstr("line 2, column 1"));
  EXPECT_EQ(refused("1;1\n2;\n", {"2"}), "line 2, column 2 of 'it' is empty");
  EXPECT_THAT(refused("1\nnan\n"), HasSubstr("line 2, column 1 of 'it' is 'nan'; a gap"));
  EXPECT_THAT(refused("inf\n1\n"), HasSubstr("line 1, column 1 of 'it' is 'inf'; a gap"));
  EXPECT_THAT(refused("1;x\n2;y\n", {"2"}), HasSubstr("line 2, column 2 of 'it' is 'y'"));
}

TEST(Columns, DecimalCommasAreRefused) {
  EXPECT_THAT(refused("1,5;2\n", {"1"}), HasSubstr("'1,5', with a decimal comma"));
  EXPECT_THAT(refused("a;b\n1,5;2\n", {"1"}), HasSubstr("'1,5', with a decimal comma"));
  EXPECT_THAT(refused("1\n1,5\n"), HasSubstr("line 2, column 1 of 'it' is '1,5', with a decimal"));
}

TEST(Columns, LinesThatAreTooShortOrLongAreDamage) {
  EXPECT_THAT(refused("1,2\n3\n", {"1"}),
              HasSubstr("line 2 of 'it' has 1 column, and the first has 2"));
  EXPECT_THAT(refused("1,2\n3,4,5\n", {"1"}), HasSubstr("line 2 of 'it' has 3 columns"));
  EXPECT_THAT(refused("1\n" + std::string(std::size_t{3} << 20U, '1') + "\n"),
              HasSubstr("longer than 1 MiB, line 2"));
}

TEST(Columns, NothingButANameIsRefused) {
  EXPECT_EQ(refused(""), "'it' is empty");
  EXPECT_EQ(refused("# only this\n\n"), "'it' is empty");
  EXPECT_EQ(refused("volts\n"), "'it' has no numbers after its first line");
}

TEST(Columns, WritesWhatItReadWithOtherNumbers) {
  EXPECT_EQ(doubled("# made\ntime;volts;note\r\n0; 1.5 ;a\r\n\n0.1;-2;b\n# end", {"volts"}),
            "# made\ntime;volts;note\r\n0; 3 ;a\r\n\n0.1;-4;b\n# end\n");
  EXPECT_EQ(doubled("1  2\n3 4\n", {"2", "1"}), "2  4\n6 8\n");
  EXPECT_EQ(doubled("0.1\n"), "0.2\n");
}

TEST(Columns, FramesBeyondTheTextHaveLinesOfTheirOwn) {
  const tests::TemporaryFile file("1;2\n");
  ColumnReader reader(file.descriptor(), "'it'", {"all"}, RestOfText::kept);
  std::string out;
  ColumnWriter writer(
      [&](std::string_view part) {
        out += part;
        return true;
      },
      reader);
  std::vector<double> frame(2);
  reader.read(frame);
  writer.write(std::vector<double>{1, 2, 3, 4});
  writer.finish();
  EXPECT_EQ(out, "1;2\n3;4\n");
}

TEST(Columns, ASignalWithoutATextHasCommas) {
  std::string out;
  ColumnWriter writer(
      [&](std::string_view part) {
        out += part;
        return false;
      },
      2, ',');
  EXPECT_FALSE(writer.write(std::vector<double>{0.1, -1e-300, 1.0 / 3.0, 2.0}));
  EXPECT_EQ(out, "0.1,-1e-300\n0.3333333333333333,2\n");
  EXPECT_THROW(writer.write(std::vector<double>{1e308 * 10, 0.0}), std::runtime_error);
}

TEST(Columns, FramesComeAsTheyArrive) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  os::write_all(ends[1], "1\n2\n3");
  ColumnReader reader(ends[0], "'it'", {}, RestOfText::dropped);
  std::vector<double> block(100);
  EXPECT_EQ(reader.read(block), 2U) << "the third is not complete";
  os::write_all(ends[1], "5\n");
  EXPECT_EQ(reader.read(block), 1U);
  EXPECT_EQ(block[0], 35.0);
  close(ends[1]);
  EXPECT_EQ(reader.read(block), 0U);
  close(ends[0]);
}
