// Quantities as a person writes them.
#include "text/quantities.h"

#include <gtest/gtest.h>

#include <string>

TEST(Counted, AgreesInNumber) {
  EXPECT_EQ(text::counted(0, "pole"), "0 poles");
  EXPECT_EQ(text::counted(1, "section"), "1 section");
  EXPECT_EQ(text::counted(2, "section"), "2 sections");
}

TEST(NoLessThan, RoundsUp) {
  EXPECT_EQ(text::no_less_than(0.1201), "0.13");
  EXPECT_EQ(text::no_less_than(0.0994), "0.1");
  EXPECT_EQ(text::no_less_than(4.4e-7), "4.4e-07");
  EXPECT_EQ(text::no_less_than(98.01), "99");
  EXPECT_EQ(text::no_less_than(0.0), "0");
  for (double value = 1e-9; value < 1e9; value *= 1.37) {
    const double shown = std::stod(text::no_less_than(value));
    EXPECT_GE(shown, value * (1 - 1e-15));
    EXPECT_LE(shown, value * 1.1);
  }
}

TEST(Duration, IsInTheUnitOfAPerson) {
  EXPECT_EQ(text::duration(0.00351), "3.51 ms");
  EXPECT_EQ(text::duration(0.9994), "999 ms");
  EXPECT_EQ(text::duration(1.0), "1 s");
  EXPECT_EQ(text::duration(119.0), "119 s");
  EXPECT_EQ(text::duration(120.0), "2 min");
  EXPECT_EQ(text::duration(7199.0), "120 min");
  EXPECT_EQ(text::duration(38172.221), "10.6 h");
}

TEST(Quantities, LevelsHaveThousandthsAndNoMinusZero) {
  EXPECT_EQ(text::decibels(-3.0103), "-3.01 dB");
  EXPECT_EQ(text::decibels(-0.1234), "-0.123 dB");
  EXPECT_EQ(text::decibels(-0.0004), "0 dB");
}
