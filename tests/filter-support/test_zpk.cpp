#include <gtest/gtest.h>

#include "support.h"

namespace {

using namespace support;

TEST(Zpk, ANewRecordHasNoRoots) {
  const Zpk record(zpk_new());
  EXPECT_TRUE(record->zeros.empty());
  EXPECT_TRUE(record->poles.empty());
}

TEST(Zpk, ARecordFromNothingHasJustItsGain) {
  const Zpk record(zpk_new_init(nullptr, 0, nullptr, 0, 2.5));
  EXPECT_TRUE(record->zeros.empty());
  EXPECT_TRUE(record->poles.empty());
  EXPECT_EQ(record->gain, 2.5);
}

TEST(Zpk, SixDoublesAreThreeZerosInTheirOrder) {
  const double zeros[] = {3.0, -1.0, 1.0, 0.0, 2.0, 5.0};
  const Zpk record(zpk_new_init(zeros, 6, nullptr, 0, 1.0));
  EXPECT_EQ(record->zeros, (t_complex64list{{3.0, -1.0}, {1.0, 0.0}, {2.0, 5.0}}));
  EXPECT_TRUE(record->poles.empty());
}

TEST(Zpk, PolesAreReadLikeZerosAndApartFromThem) {
  const double zeros[] = {9.0, 8.0};
  const double poles[] = {0.5, 0.25, 0.5, -0.25};
  const Zpk record(zpk_new_init(zeros, 2, poles, 4, -1.5));
  EXPECT_EQ(record->zeros, (t_complex64list{{9.0, 8.0}}));
  EXPECT_EQ(record->poles, (t_complex64list{{0.5, 0.25}, {0.5, -0.25}}));
  EXPECT_EQ(record->gain, -1.5);
}

// The count stops the list, not a root in the middle.
TEST(Zpk, TheLastRootOfAnOddCountIsReadWhole) {
  const double roots[] = {3.0, -1.0, 1.0, 0.5, 2.0, 5.0};
  const t_complex64list all = {{3.0, -1.0}, {1.0, 0.5}, {2.0, 5.0}};
  for (int64_t count = 1; count <= 5; count += 2) {
    const t_complex64list expected(all.begin(), all.begin() + (count + 1) / 2);
    const Zpk of_zeros(zpk_new_init(roots, count, nullptr, 0, 1.0));
    EXPECT_EQ(of_zeros->zeros, expected) << count;
    EXPECT_TRUE(of_zeros->poles.empty());
    const Zpk of_poles(zpk_new_init(nullptr, 0, roots, count, 1.0));
    EXPECT_EQ(of_poles->poles, expected) << count;
    EXPECT_TRUE(of_poles->zeros.empty());
  }
}

TEST(Zpk, ACountBelowZeroIsNone) {
  const double roots[] = {3.0, -1.0};
  for (const int64_t count : {-1, -2}) {
    const Zpk record(zpk_new_init(roots, count, roots, count, 1.0));
    EXPECT_TRUE(record->zeros.empty());
    EXPECT_TRUE(record->poles.empty());
  }
}

TEST(Zpk, TheRecordKeepsCopiesOfTheRoots) {
  double poles[] = {0.5, 0.25};
  const Zpk record(zpk_new_init(nullptr, 0, poles, 2, 1.0));
  poles[0] = 100.0;
  EXPECT_EQ(record->poles[0], Complex(0.5, 0.25));
}

TEST(Zpk, FreeingNothingDoesNothing) { zpk_free(nullptr); }

}  // namespace
