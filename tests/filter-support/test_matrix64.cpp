#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

void expect_shape(const Matrix &m, int32_t cols, int32_t rows) {
  EXPECT_EQ(m->cols, cols);
  EXPECT_EQ(m->rows, rows);
}

// Elements that mark an untouched matrix in tests of refused operations.
Matrix untouched() { return matrix({{7.0, 8.0, 9.0}}); }
void expect_untouched(const Matrix &m) {
  expect_shape(m, 3, 1);
  EXPECT_EQ(stored(m.get()), (Values{7.0, 8.0, 9.0}));
}

// --- shape and storage ---------------------------------------------------------

TEST(Matrix64, ANewMatrixHasNoElementsAndNoStorage) {
  const Matrix m(matrix64_new());
  expect_shape(m, 0, 0);
  EXPECT_EQ(m->capacity, 0);
  EXPECT_EQ(m->data, nullptr);
}

TEST(Matrix64, AnElementReadsBackAsItWasSet) {
  const Matrix m = shaped(3, 2);
  matrix64_set(m.get(), 1, 1, 4.25);
  EXPECT_EQ(matrix64_get(m.get(), 1, 1), 4.25);
}

TEST(Matrix64, ColumnTwoOfRowOneIsTheLastOfSixElements) {
  const Matrix m = shaped(3, 2);
  matrix64_set(m.get(), 2, 1, 6.5);
  EXPECT_EQ(stored(m.get()), (Values{0.0, 0.0, 0.0, 0.0, 0.0, 6.5}));
  EXPECT_EQ(matrix64_get(m.get(), 2, 1), 6.5);
}

TEST(Matrix64, TheFirstReshapeMakesZeros) {
  const Matrix m = shaped(2, 3);
  expect_shape(m, 2, 3);
  EXPECT_EQ(m->capacity, 6);
  EXPECT_EQ(stored(m.get()), Values(6, 0.0));
}

TEST(Matrix64, TheFirstReshapeMakesStorageForNothingToo) {
  const Matrix m(matrix64_new());
  matrix64_resize(m.get(), 0, 0);
  EXPECT_NE(m->data, nullptr);
  expect_shape(m, 0, 0);
}

TEST(Matrix64, ReshapingToTheSameShapeKeepsStorageAndValues) {
  const Matrix m = matrix({{1.0, 2.0}, {3.0, 4.0}});
  const double *const before = m->data;
  matrix64_resize(m.get(), 2, 2);
  EXPECT_EQ(m->data, before);
  EXPECT_EQ(stored(m.get()), (Values{1.0, 2.0, 3.0, 4.0}));
}

TEST(Matrix64, ReshapingKeepsElementsInTheirPlaceInMemory) {
  const Matrix m = matrix({{1.0, 2.0}, {3.0, 4.0}});
  matrix64_resize(m.get(), 3, 2);
  EXPECT_EQ(m->capacity, 6);
  EXPECT_EQ(stored(m.get()), (Values{1.0, 2.0, 3.0, 4.0, 0.0, 0.0}));
  matrix64_resize(m.get(), 1, 3);
  EXPECT_EQ(m->capacity, 3);
  EXPECT_EQ(stored(m.get()), (Values{1.0, 2.0, 3.0}));
  matrix64_resize(m.get(), 2, 2);
  EXPECT_EQ(stored(m.get()), (Values{1.0, 2.0, 3.0, 0.0})) << "what was cut off is gone";
}

TEST(Matrix64, ACopyHasTheSameShapeAndItsOwnElements) {
  const Matrix from = matrix({{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}});
  const Matrix to = untouched();
  matrix64_copy(to.get(), from.get());
  expect_shape(to, 3, 2);
  EXPECT_NE(to->data, from->data);
  EXPECT_EQ(stored(to.get()), stored(from.get()));
}

TEST(Matrix64, ClearingLeavesTheShape) {
  const Matrix m = untouched();
  matrix64_clear(m.get());
  expect_shape(m, 3, 1);
  EXPECT_EQ(stored(m.get()), Values(3, 0.0));
}

TEST(Matrix64, TheIdentityReplacesWhatWasThere) {
  const Matrix m = matrix({{5.0, 5.0}, {5.0, 5.0}});
  matrix64_identity(m.get(), 2);
  EXPECT_EQ(stored(m.get()), (Values{1.0, 0.0, 0.0, 1.0}));
  matrix64_identity(m.get(), 3);
  EXPECT_EQ(stored(m.get()), (Values{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0}));
}

TEST(Matrix64, AnIdentityBelowOneRowHasNoOnes) {
  const Matrix m = matrix({{5.0}});
  matrix64_identity(m.get(), 0);
  expect_shape(m, 0, 0);
  matrix64_identity(m.get(), -1);
  expect_shape(m, -1, -1);
}

// --- inverse and quotients -----------------------------------------------------

TEST(Matrix64, TheInverseOfTwoByTwoFollowsCramersRule) {
  const Matrix m = matrix({{4.0, 7.0}, {2.0, 6.0}});
  const Matrix inverse(matrix64_new());
  EXPECT_EQ(matrix64_inverse(inverse.get(), m.get()), 0);
  EXPECT_TRUE(close(stored(inverse.get()), {0.6, -0.7, -0.2, 0.4}, 1e-15));
}

TEST(Matrix64, AMatrixMayBeInvertedInPlace) {
  const Matrix m = matrix({{0.0, 2.0}, {4.0, 0.0}});
  EXPECT_EQ(matrix64_inverse(m.get(), m.get()), 0);
  EXPECT_EQ(stored(m.get()), (Values{0.0, 0.25, 0.5, 0.0}));
}

TEST(Matrix64, WhatIsNotSquareHasNoInverse) {
  const Matrix inverse = untouched();
  EXPECT_EQ(matrix64_inverse(inverse.get(), shaped(3, 2).get()), -1);
  EXPECT_EQ(matrix64_inverse(inverse.get(), shaped(2, 3).get()), -1);
  expect_untouched(inverse);
}

TEST(Matrix64, TheInverseOfNothingIsNothing) {
  const Matrix inverse = untouched();
  const Matrix empty(matrix64_new());
  EXPECT_EQ(matrix64_inverse(inverse.get(), empty.get()), 0);
  expect_shape(inverse, 0, 0);
}

TEST(Matrix64, ASingularMatrixYieldsElementsThatAreNotFinite) {
  const Watchdog watchdog("the inverse of a singular matrix");
  for (const Matrix &singular :
       {matrix({{0.0}}), matrix({{1.0, 2.0}, {2.0, 4.0}}), matrix({{0.0, 0.0}, {0.0, 0.0}}),
        matrix({{1.0, 0.0, 0.0}, {0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}}),
        matrix({{1.0, not_a_number}, {2.0, 1.0}})}) {
    const Matrix inverse(matrix64_new());
    EXPECT_EQ(matrix64_inverse(inverse.get(), singular.get()), 0);
    expect_shape(inverse, singular->cols, singular->rows);
    const Values values = stored(inverse.get());
    EXPECT_TRUE(
        std::any_of(values.begin(), values.end(), [](double x) { return !std::isfinite(x); }));
  }
}

RC_GTEST_PROP(Matrix64, TheInverseTimesTheMatrixIsTheIdentity, ()) {
  const int n = *rc::gen::inRange(1, 9);
  const auto entries = *rc::gen::container<std::vector<int>>(static_cast<std::size_t>(n * n),
                                                             rc::gen::inRange(-100, 101));
  const Matrix m = shaped(n, n);
  for (std::size_t i = 0; i < entries.size(); ++i) m->data[i] = entries[i] / 100.0;
  // A heavy diagonal keeps the condition number below about 3.
  for (int i = 0; i < n; ++i) matrix64_set(m.get(), i, i, 2.0 * n + matrix64_get(m.get(), i, i));

  const Matrix inverse(matrix64_new());
  const Matrix product(matrix64_new());
  const Matrix identity(matrix64_new());
  matrix64_identity(identity.get(), n);
  RC_ASSERT(matrix64_inverse(inverse.get(), m.get()) == 0);
  RC_ASSERT(matrix64_multiply(product.get(), inverse.get(), m.get(), true) == 0);
  RC_ASSERT(bool(close(stored(product.get()), stored(identity.get()), 1e-14)));
}

TEST(Matrix64, TheLeftQuotientSolvesASystem) {
  const Matrix a = matrix({{2.0, 1.0}, {1.0, 3.0}});
  const Matrix b = matrix({{5.0}, {10.0}});
  const Matrix x(matrix64_new());
  EXPECT_EQ(matrix64_divide_left(x.get(), a.get(), b.get(), true), 0);
  expect_shape(x, 1, 2);
  EXPECT_TRUE(close(stored(x.get()), {1.0, 3.0}, 1e-15));
}

TEST(Matrix64, AnUncheckedLeftQuotientKeepsOnlyTheFirstRowOfAColumn) {
  const Matrix a = matrix({{2.0, 1.0}, {1.0, 3.0}});
  const Matrix b = matrix({{5.0}, {10.0}});
  const Matrix x(matrix64_new());
  EXPECT_EQ(matrix64_divide_left(x.get(), a.get(), b.get(), false), 0);
  EXPECT_TRUE(close(stored(x.get()), {1.0, 0.0}, 1e-15));
}

TEST(Matrix64, TheRightQuotientOfARowIsARow) {
  const Matrix a = matrix({{5.0, 10.0}});
  const Matrix b = matrix({{2.0, 1.0}, {1.0, 3.0}});
  const Matrix x(matrix64_new());
  EXPECT_EQ(matrix64_divide_right(x.get(), a.get(), b.get()), 0);
  expect_shape(x, 2, 1);
  EXPECT_TRUE(close(stored(x.get()), {1.0, 3.0}, 1e-15));
}

// The product behind it is not checked: rows of the result are as far apart as the
// dividend has rows. What falls outside is dropped, what overlaps is added.
TEST(Matrix64, TheRightQuotientOfAnOblongDividendIsLaidOutByItsRows) {
  const Matrix tall = matrix({{2.0, 4.0}, {6.0, 8.0}, {10.0, 12.0}});
  const Matrix x(matrix64_new());
  EXPECT_EQ(matrix64_divide_right(x.get(), tall.get(), matrix({{2.0, 0.0}, {0.0, 4.0}}).get()), 0);
  expect_shape(x, 2, 3);
  EXPECT_EQ(stored(x.get()), (Values{1.0, 1.0, 0.0, 3.0, 2.0, 0.0}));

  const Matrix wide = matrix({{2.0, 4.0, 8.0}, {6.0, 8.0, 16.0}});
  const Matrix b = matrix({{2.0, 0.0, 0.0}, {0.0, 4.0, 0.0}, {0.0, 0.0, 8.0}});
  EXPECT_EQ(matrix64_divide_right(x.get(), wide.get(), b.get()), 0);
  expect_shape(x, 3, 2);
  EXPECT_EQ(stored(x.get()), (Values{1.0, 1.0, 1.0 + 3.0, 2.0, 2.0, 0.0}));
}

TEST(Matrix64, AQuotientMayReplaceItsDivisor) {
  const Matrix b = matrix({{1.0, 0.0}, {0.0, 3.0}});
  const Matrix left = matrix({{2.0, 0.0}, {0.0, 4.0}});
  EXPECT_EQ(matrix64_divide_left(left.get(), left.get(), b.get(), true), 0);
  EXPECT_EQ(stored(left.get()), (Values{0.5, 0.0, 0.0, 0.75}));
  const Matrix right = matrix({{2.0, 0.0}, {0.0, 4.0}});
  EXPECT_EQ(matrix64_divide_right(right.get(), b.get(), right.get()), 0);
  EXPECT_EQ(stored(right.get()), (Values{0.5, 0.0, 0.0, 0.75}));
}

TEST(Matrix64, QuotientsRefuseUnfittingShapes) {
  const Matrix result = untouched();
  const Matrix square = matrix({{1.0, 0.0}, {0.0, 1.0}});
  const Matrix wide = shaped(3, 2);
  const Matrix tall = shaped(1, 3);
  EXPECT_EQ(matrix64_divide_left(result.get(), wide.get(), square.get(), true), -1);
  EXPECT_EQ(matrix64_divide_left(result.get(), square.get(), tall.get(), true), -1);
  EXPECT_EQ(matrix64_divide_left(result.get(), square.get(), tall.get(), false), -1);
  EXPECT_EQ(matrix64_divide_right(result.get(), square.get(), wide.get()), -1);
  EXPECT_EQ(matrix64_divide_right(result.get(), tall.get(), square.get()), -1);
  expect_untouched(result);
}

// --- element by element --------------------------------------------------------

TEST(Matrix64, ScalingCountsTheElementsWritten) {
  const Matrix m = matrix({{1.0, -2.0, 4.0}, {0.5, 0.0, 8.0}});
  const Matrix scaled(matrix64_new());
  EXPECT_EQ(matrix64_scale(scaled.get(), m.get(), 0.5), 6);
  expect_shape(scaled, 3, 2);
  EXPECT_EQ(stored(scaled.get()), (Values{0.5, -1.0, 2.0, 0.25, 0.0, 4.0}));
  EXPECT_EQ(matrix64_scale(m.get(), m.get(), 0.5), 6) << "in place";
  EXPECT_EQ(stored(m.get()), stored(scaled.get()));
}

TEST(Matrix64, SumsAndDifferencesGoElementByElement) {
  const Matrix a = matrix({{1.0, 2.0}});
  const Matrix b = matrix({{10.0, 30.0}});
  const Matrix result(matrix64_new());
  EXPECT_EQ(matrix64_add(result.get(), a.get(), b.get()), 0);
  EXPECT_EQ(stored(result.get()), (Values{11.0, 32.0}));
  EXPECT_EQ(matrix64_subtract(result.get(), a.get(), b.get()), 0);
  EXPECT_EQ(stored(result.get()), (Values{-9.0, -28.0}));
}

TEST(Matrix64, SumsAndDifferencesMayReplaceEitherOperand) {
  const Matrix a = matrix({{1.0, 2.0}});
  const Matrix b = matrix({{10.0, 30.0}});
  EXPECT_EQ(matrix64_add(a.get(), a.get(), b.get()), 0);
  EXPECT_EQ(stored(a.get()), (Values{11.0, 32.0}));
  EXPECT_EQ(matrix64_subtract(b.get(), a.get(), b.get()), 0);
  EXPECT_EQ(stored(b.get()), (Values{1.0, 2.0}));
  EXPECT_EQ(matrix64_subtract(a.get(), a.get(), b.get()), 0);
  EXPECT_EQ(stored(a.get()), (Values{10.0, 30.0}));
  EXPECT_EQ(matrix64_add(b.get(), a.get(), b.get()), 0);
  EXPECT_EQ(stored(b.get()), (Values{11.0, 32.0}));
}

TEST(Matrix64, SumsAndDifferencesRefuseOtherShapes) {
  const Matrix result = untouched();
  const Matrix a = shaped(2, 3);
  for (const Matrix &other : {shaped(3, 2), shaped(2, 2), shaped(3, 3)}) {
    EXPECT_EQ(matrix64_add(result.get(), a.get(), other.get()), -1);
    EXPECT_EQ(matrix64_subtract(result.get(), a.get(), other.get()), -1);
  }
  expect_untouched(result);
}

}  // namespace
