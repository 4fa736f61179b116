// Numbers as texts.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>

#include "text/numbers.h"

TEST(DoubleText, HasAPointOrAnExponent) {
  EXPECT_EQ(text::double_text(1.0), "1.0");
  EXPECT_EQ(text::double_text(-0.0), "-0.0");
  EXPECT_EQ(text::double_text(1e300), "1.0000000000000001e+300");
  EXPECT_EQ(text::double_text(1e-5), "1.0000000000000001e-05");
  EXPECT_EQ(text::double_text(0.1), "0.10000000000000001");
  EXPECT_EQ(text::double_text(123456789.0), "123456789.0");
}

TEST(FloatText, HasNineDigits) {
  EXPECT_EQ(text::float_text(0.1), "0.1");
  EXPECT_EQ(text::float_text(1.0 / 3), "0.333333333");
  EXPECT_EQ(text::float_text(16777217.0), "16777217.0");
}

// As the C library writes them, which is what they have always been.
TEST(NumberTexts, ReadBackToTheSameNumber) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> exponent(-300, 300), mantissa(-1, 1);
  for (int i = 0; i < 10000; ++i) {
    const double value = mantissa(random) * std::pow(10.0, exponent(random));
    const std::string text = text::double_text(value);
    EXPECT_EQ(std::strtod(text.c_str(), nullptr), value) << text;
    char printed[64];
    std::snprintf(printed, sizeof printed, "%.17g", value);
    EXPECT_EQ(text.substr(0, std::string(printed).size()), printed);
    const auto single = static_cast<float>(mantissa(random));
    EXPECT_EQ(std::strtof(text::float_text(static_cast<double>(single)).c_str(), nullptr), single);
  }
}
