// Command lines for a shell.

#include <gtest/gtest.h>

#include "text/shell.h"

TEST(ShellLine, LeavesPlainWordsAndQuotesOthers) {
  EXPECT_EQ(text::shell_line({"veltane", "design", "--order", "4", "-o", "a/b_c.svg"}),
            "veltane design --order 4 -o a/b_c.svg");
  EXPECT_EQ(text::shell_line({"a", "", "two words", "$HOME", "it's"}),
            "a '' 'two words' '$HOME' 'it'\\''s'");
}

TEST(ShellLine, WritesWhatMayNotBeShownAsItsBytes) {
  EXPECT_EQ(text::shell_line({"a\nb"}), "$'a\\x0ab'");
  EXPECT_EQ(text::shell_line({"'\x01\\"}), "$'\\'\\x01\\\\'");
  EXPECT_EQ(text::shell_line({"\u2028"}), "$'\\xe2\\x80\\xa8'");
}
