#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "components.h"

namespace {

using Sets = std::vector<std::vector<int32_t>>;

Sets sets(const std::vector<double> &matrix, int32_t n) {
  const filtermath::Components parts = filtermath::components(matrix.data(), n);
  Sets list;
  for (std::size_t k = 0; k + 1 < parts.begins.size(); ++k)
    list.emplace_back(parts.states.begin() + parts.begins[k],
                      parts.states.begin() + parts.begins[k + 1]);
  return list;
}

TEST(ComponentsOf, ADiagonalMatrixAreItsElements) {
  EXPECT_EQ(sets({1, 0, 0, 1}, 2), (Sets{{0}, {1}}));
}

TEST(ComponentsOf, AFullMatrixIsOne) { EXPECT_EQ(sets({1, 1, 1, 1}, 2), (Sets{{0, 1}})); }

TEST(ComponentsOf, ARingIsOne) {
  EXPECT_EQ(sets({0, 1, 0, 0, 0, 1, 1, 0, 0}, 3), (Sets{{0, 1, 2}}));
}

TEST(ComponentsOf, EachLeadsToEarlierOnesOnly) {
  // 0 <-> 2, both lead to 1; 3 leads to all.
  EXPECT_EQ(sets({1, 1, 1, 0, 0, 1, 0, 0, 1, 0, 0, 0, 1, 1, 1, 1}, 4), (Sets{{1}, {0, 2}, {3}}));
}

TEST(ComponentsOf, NothingAreNone) { EXPECT_EQ(sets({}, 0), Sets{}); }

}  // namespace
