// Lines that wait, in memory and in a file.

#include "line_queue.h"

#include <gtest/gtest.h>

#include <random>

using signals::LineQueue;

namespace {

std::string line(std::size_t number) {
  return std::to_string(number) + std::string(number % 300, 'x');
}

}  // namespace

TEST(LineQueue, KeepsTheOrder) {
  LineQueue queue;
  EXPECT_TRUE(queue.empty());
  queue.push("a");
  queue.push("");
  queue.push("b");
  EXPECT_EQ(queue.pop(), "a");
  EXPECT_EQ(queue.pop(), "");
  EXPECT_FALSE(queue.empty());
  EXPECT_EQ(queue.pop(), "b");
  EXPECT_TRUE(queue.empty());
}

// Far more than it holds in memory, pushed and popped in turns of random lengths.
TEST(LineQueue, KeepsTheOrderThroughItsFile) {
  LineQueue queue;
  std::mt19937 generator(7);
  std::size_t pushed = 0, popped = 0;
  for (const std::size_t most : {200000U, 1000U, 60000U, 10U}) {
    for (int turn = 0; turn < 4; ++turn) {
      for (std::size_t count = generator() % most; count > 0; --count) queue.push(line(pushed++));
      for (std::size_t count = generator() % (2 * most); count > 0 && popped < pushed; --count)
        ASSERT_EQ(queue.pop(), line(popped++));
    }
    while (popped < pushed) ASSERT_EQ(queue.pop(), line(popped++));
    ASSERT_TRUE(queue.empty());
  }
  EXPECT_GT(pushed, 300000U) << "the file was of use";
}
