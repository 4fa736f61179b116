#include <gtest/gtest.h>
#include <unistd.h>

#include "watchdog.h"

namespace {

// The tests of endless loops are worth something only if the watchdog barks.
TEST(Watchdog, NamesTheTestAndWhatHungAndExits) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        const tests::Watchdog watchdog("a loop without end", 1);
        for (;;) pause();
      },
      testing::ExitedWithCode(1), "NamesTheTestAndWhatHungAndExits: a loop without end");
}

TEST(Watchdog, LeavesTheProcessAloneOnceItIsGone) {
  { const tests::Watchdog watchdog("nothing", 1); }
  EXPECT_EQ(alarm(0), 0u) << "seconds of an alarm still running";
}

}  // namespace
