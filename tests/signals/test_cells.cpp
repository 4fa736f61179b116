// Lines as the cells of a table.

#include "cells.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using signals::cells_of;
using testing::ElementsAre;

TEST(Cells, TheDelimiterIsThatOfTheLine) {
  EXPECT_EQ(signals::delimiter_of("1\t2,5"), '\t');
  EXPECT_EQ(signals::delimiter_of("1,5;2"), ';');
  EXPECT_EQ(signals::delimiter_of("1, 2"), ',');
  EXPECT_EQ(signals::delimiter_of("1 2"), ' ');
  EXPECT_EQ(signals::delimiter_of("\t 1"), ' ') << "blanks before the first cell are no delimiter";
}

TEST(Cells, AreWithoutBlanksAroundThem) {
  EXPECT_THAT(cells_of(" 1 , 2,3\r", ','), ElementsAre("1", "2", "3"));
  EXPECT_THAT(cells_of("  1   2\t3 \r", ' '), ElementsAre("1", "2", "3"));
  EXPECT_THAT(cells_of("1,,", ','), ElementsAre("1", "", ""));
  EXPECT_THAT(cells_of("1\t\t3", '\t'), ElementsAre("1", "", "3"));
}

TEST(Cells, QuotesHideDelimiters) {
  EXPECT_THAT(cells_of(R"("time, s","a""b",3)", ','),
              ElementsAre(R"("time, s")", R"("a""b")", "3"));
  EXPECT_EQ(signals::unquoted(R"("time, s")"), "time, s");
  EXPECT_EQ(signals::unquoted("\""), "\"");
}

TEST(Cells, NumbersAreWholeCells) {
  EXPECT_EQ(signals::number_in("1.5"), 1.5);
  EXPECT_EQ(signals::number_in("+1.5e-3"), 1.5e-3);
  EXPECT_EQ(signals::number_in("\"-2\""), -2.0);
  EXPECT_TRUE(std::isnan(signals::number_in("NaN").value()));
  for (const char *text : {"", "1,5", "1.5 V", "x", "+-1", "0x10", "1 2"})
    EXPECT_EQ(signals::number_in(text), std::nullopt) << text;
}

TEST(Cells, DecimalCommasAreRecognised) {
  for (const char *text : {"1,5", "-0,25", "\"1,5\""})
    EXPECT_TRUE(signals::has_decimal_comma(text)) << text;
  for (const char *text : {"1.5", ",5", "5,", "1,2,3", "a,b", ""})
    EXPECT_FALSE(signals::has_decimal_comma(text)) << text;
}
