// The size of a filter without settings.

#include "check_test.h"

using namespace verdict;

TEST(CheckSize, CountsPolesAndSections) {
  const Verdict verdict = checked_sections({{1, 0, 0, -0.5, 0}, {1, 2, 1, -1.5, 0.75}});
  EXPECT_EQ(fact(verdict, "order"), "3 poles, in 2 sections\n");
  EXPECT_EQ(fact(verdict, "sample rate"), "48000 Hz\n");
  EXPECT_EQ(measured(verdict, "poles"), 3);
  EXPECT_EQ(measured(verdict, "samplerate"), 48000);
}

TEST(CheckSize, NothingIsSaidOfSettingsThatNobodyKnows) {
  const Verdict verdict = checked_sections({{1, 0, 0, -0.5, 0}});
  for (const char *about : {"cutoff", "published", "forms", "transfer function"})
    EXPECT_EQ(fact(verdict, about) + note(verdict, about) + problem(verdict, about), "") << about;
}
