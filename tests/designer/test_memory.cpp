// A designer that designs for days.

#include <malloc.h>

#include <cstddef>

#include <gtest/gtest.h>

#include "../designer_with_module.h"

namespace {

// The sanitizers' allocator says 0, and finds leaks in its own way.
std::size_t allocated() { return mallinfo2().uordblks; }

void design(int times) {
  for (int i = 0; i < times; ++i) tests::designer_with_module().design({});
}

// After some designs, as what was freed last is kept for a while to be told from what lives.
constexpr int until_steady = 3000;
constexpr int times = 10000;
constexpr std::size_t slack = std::size_t{64} * 1024;

}  // namespace

TEST(Memory, DoesNotGrowFromOneDesignToTheNext) {
  design(until_steady);
  const std::size_t before = allocated();
  design(times);
  EXPECT_LE(allocated(), before + slack);
}
