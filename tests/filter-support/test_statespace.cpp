#include <gtest/gtest.h>

#include <set>

#include "support.h"

namespace {

using namespace support;

TEST(Statespace, ANewModelHoldsFourEmptyMatricesWithoutStorage) {
  const Model ss(statespace_new());
  for (const _matrix64 *m : {ss->a, ss->b, ss->c, ss->d}) {
    ASSERT_NE(m, nullptr);
    EXPECT_EQ(m->cols, 0);
    EXPECT_EQ(m->rows, 0);
    EXPECT_EQ(m->capacity, 0);
    EXPECT_EQ(m->data, nullptr);
  }
}

TEST(Statespace, EachMatrixIsItsOwn) {
  const Model ss(statespace_new());
  EXPECT_EQ((std::set<_matrix64 *>{ss->a, ss->b, ss->c, ss->d}).size(), 4u);
}

// The leak sanitizer reports what leaks here.
TEST(Statespace, AModelIsReleasedWithWhateverItHolds) {
  statespace_free(statespace_new());
  Model ss = model({{1.0, 2.0}, {3.0, 4.0}}, {5.0, 6.0}, {7.0, 8.0}, 9.0);
  ss.reset();
}

}  // namespace
