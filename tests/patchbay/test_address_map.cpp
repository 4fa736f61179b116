// The map behind the ledger against the standard library's.

#include "../../patchbay/src/address_map.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <unordered_map>
#include <vector>

namespace tests {
namespace {

using patchbay::AddressMap;

// Blocks lie 16 bytes apart, so neighbours are common.
const void *address(std::uintptr_t number) { return reinterpret_cast<const void *>(16 * number); }

TEST(TheAddressMap, FindsNothingWhereNothingWasEntered) {
  AddressMap<int> map;
  EXPECT_EQ(map.find(address(1)), nullptr);
  EXPECT_EQ(map.find(nullptr), nullptr);
  map.erase(address(1));
  map.erase(nullptr);
  EXPECT_EQ(map.size(), 0U);
}

TEST(TheAddressMap, KeepsAValueForEachAddress) {
  AddressMap<int> map;
  map[address(1)] = 10;
  map[address(2)] = 20;
  map[address(1)] = 30;
  EXPECT_EQ(map.size(), 2U);
  EXPECT_EQ(*map.find(address(1)), 30);
  EXPECT_EQ(*map.find(address(2)), 20);
}

TEST(TheAddressMap, EntersWithoutMovingWhereRoomWasMade) {
  AddressMap<int> map;
  for (std::uintptr_t i = 1; i <= 1000; ++i) {
    map.make_room();
    EXPECT_FALSE(map.make_room()) << "there is room for one more";
    map[address(i)] = 1;
  }
  EXPECT_EQ(map.size(), 1000U);
}

// Few addresses, entered and erased in turn: long runs of neighbours with holes in them.
TEST(TheAddressMap, AgreesWithTheStandardOneUnderRandomUse) {
  constexpr std::uint32_t seed = 1;
  std::mt19937 random(seed);
  AddressMap<std::uint32_t> map;
  std::unordered_map<const void *, std::uint32_t> expected;
  for (std::uint32_t step = 0; step < 200000; ++step) {
    // The number of addresses that are in use swells and ebbs.
    const bool enters = random() % 100 < (step / 20000 % 2 == 0 ? 65U : 35U);
    const void *where = address(1 + random() % 3000);
    if (enters) {
      map[where] = step;
      expected[where] = step;
    } else {
      map.erase(where);
      expected.erase(where);
    }
    ASSERT_EQ(map.size(), expected.size()) << "step " << step << ", seed " << seed;
    const auto *found = map.find(where);
    ASSERT_EQ(found != nullptr, enters) << "step " << step << ", seed " << seed;
    if (step % 1000 != 0) continue;
    for (const auto &[key, value] : expected) {
      const auto *kept = map.find(key);
      ASSERT_NE(kept, nullptr) << "step " << step << ", seed " << seed;
      ASSERT_EQ(*kept, value) << "step " << step << ", seed " << seed;
    }
    std::size_t visited = 0;
    map.for_each([&](const void *key, std::uint32_t value) {
      ++visited;
      EXPECT_EQ(expected.at(key), value);
    });
    ASSERT_EQ(visited, expected.size());
  }
}

}  // namespace
}  // namespace tests
