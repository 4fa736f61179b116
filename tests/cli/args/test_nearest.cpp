// What a mistyped word may have meant.

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "args/nearest.h"

namespace {

constexpr std::array<std::string_view, 4> words{"design", "check", "plot", "export"};

std::string near(std::string_view typed) {
  return std::string(cli::nearest(typed, words).value_or(""));
}

}  // namespace

TEST(Nearest, ForgivesTwoSlips) {
  EXPECT_EQ(near("design"), "design");
  EXPECT_EQ(near("desing"), "design") << "exchanged";
  EXPECT_EQ(near("desig"), "design") << "left out";
  EXPECT_EQ(near("eexport"), "export") << "added";
  EXPECT_EQ(near("chock"), "check") << "changed";
  EXPECT_EQ(near("dsing"), "design");
  EXPECT_EQ(near("dzzgn"), "") << "three slips";
}

TEST(Nearest, ForgivesNoMoreThanHalfOfAWord) {
  EXPECT_EQ(near("plat"), "plot");
  EXPECT_EQ(near("pl"), "plot") << "two of four";
  EXPECT_EQ(near("p"), "");
  EXPECT_EQ(near(""), "");
  EXPECT_EQ(near(std::string(100000, 'x')), "");
}
