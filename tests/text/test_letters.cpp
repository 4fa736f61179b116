// Capital and small letters.

#include <gtest/gtest.h>

#include "text/letters.h"

TEST(Letters, OnlyThoseOfEnglishBecomeSmall) {
  EXPECT_EQ(text::lower_case("WAV-16 bit"), "wav-16 bit");
  EXPECT_EQ(text::lower_case("\xc3\x84Z["), "\xc3\x84z[");
}
