// The counter against programs whose allocations are known.

#include "allocations.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <vector>

namespace {

using bench::Allocations;
using bench::allocations;

// Hides from the compiler what becomes of a block, so that it cannot leave the
// allocation out.
void *kept(void *block) {
  asm volatile("" : "+r"(block) : : "memory");
  return block;
}

template <typename Body>
Allocations during(Body &&body) {
  const Allocations before = allocations();
  body();
  return allocations() - before;
}

void expect(const Allocations &found, std::size_t count, std::size_t bytes) {
  EXPECT_EQ(found.count, count);
  EXPECT_EQ(found.bytes, bytes);
}

TEST(Allocations, CountsEachWayToAsk) {
  expect(during([] { std::free(kept(std::malloc(100))); }), 1, 100);
  expect(during([] { std::free(kept(std::calloc(7, 11))); }), 1, 77);
  expect(during([] { std::free(kept(std::aligned_alloc(64, 128))); }), 1, 128);
  expect(during([] { std::free(kept(memalign(32, 96))); }), 1, 96);
  expect(during([] {
           void *block = nullptr;
           ASSERT_EQ(posix_memalign(&block, 64, 24), 0);
           std::free(kept(block));
         }),
         1, 24);
  expect(during([] { delete static_cast<double *>(kept(new double)); }), 1, sizeof(double));
}

TEST(Allocations, CountsAResizedBlockWithItsNewSize) {
  expect(during([] {
           void *block = kept(std::malloc(10));
           block = kept(std::realloc(block, 1000));
           std::free(kept(reallocarray(block, 3, 1000)));
         }),
         3, 10 + 1000 + 3000);
}

// libstdc++ is a library of its own: its calls must arrive here as well.
TEST(Allocations, CountsInsideSharedLibraries) {
  expect(during([] {
           std::string text;
           text.reserve(99);  // and the end
           kept(text.data());
         }),
         1, 100);
}

TEST(Allocations, CountsInsideAModuleThatIsLoadedLater) {
  void *module = dlopen(ALLOCATING_MODULE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(module, nullptr) << dlerror();
  const auto ask = reinterpret_cast<void *(*)(std::size_t)>(dlsym(module, "ask"));
  ASSERT_NE(ask, nullptr);
  expect(during([&] { std::free(kept(ask(321))); }), 1, 321);
  dlclose(module);
}

TEST(Allocations, CountsAVectorThatIsPushedTo) {
  expect(during([] {
           std::vector<int> list;
           for (int i = 0; i < 5; ++i) list.push_back(i);  // grows to 1, 2, 4 and 8
           kept(list.data());
         }),
         4, (1 + 2 + 4 + 8) * sizeof(int));
}

TEST(Allocations, LeavesOutWhatFailsAndWhatIsFreed) {
  void *block = kept(std::malloc(8));
  expect(during([&] { std::free(block); }), 0, 0);
  expect(during([] {
           volatile std::size_t all = static_cast<std::size_t>(-1) / 2;
           EXPECT_EQ(kept(std::malloc(all)), nullptr);
           EXPECT_EQ(kept(std::calloc(all, 4)), nullptr);
         }),
         0, 0);
}

TEST(Allocations, BelongToTheThreadThatAsked) {
  Allocations there{};
  std::thread([&] { there = during([] { std::free(kept(std::malloc(5000))); }); }).join();
  expect(there, 1, 5000);
  const Allocations before = allocations();
  std::thread([] { std::free(kept(std::malloc(123456))); }).join();
  EXPECT_LT((allocations() - before).bytes, 123456U);
}

}  // namespace
