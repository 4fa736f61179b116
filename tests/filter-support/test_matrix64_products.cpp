#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support.h"

namespace {

using namespace support;
using Values = std::vector<double>;

Matrix product(const Matrix &a, const Matrix &b, bool checked) {
  Matrix result(matrix64_new());
  EXPECT_EQ(matrix64_multiply(result.get(), a.get(), b.get(), checked), 0);
  return result;
}

Matrix product_by_columns(const Matrix &a, const Matrix &b) {
  Matrix result(matrix64_new());
  EXPECT_EQ(matrix64_multiply_correctly(result.get(), a.get(), b.get()), 0);
  return result;
}

TEST(Matrix64Product, CheckedIsTheOrdinaryProductWithAColumn) {
  const Matrix a = matrix({{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}});
  const Matrix b = matrix({{1.0}, {10.0}, {100.0}});
  const Matrix ab = product(a, b, true);
  EXPECT_EQ(ab->cols, 1);
  EXPECT_EQ(ab->rows, 2);
  EXPECT_EQ(stored(ab.get()), (Values{321.0, 654.0}));
}

TEST(Matrix64Product, CheckedIsTheOrdinaryProductForAnyShapes) {
  const Matrix a = matrix({{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}});
  const Matrix b = matrix({{1.0, 0.0, 2.0, -1.0}, {0.0, 1.0, 10.0, 1.0}});
  const Matrix ab = product(a, b, true);
  EXPECT_EQ(ab->cols, 4);
  EXPECT_EQ(ab->rows, 3);
  EXPECT_EQ(stored(ab.get()),
            (Values{1.0, 2.0, 22.0, 1.0, 3.0, 4.0, 46.0, 1.0, 5.0, 6.0, 70.0, 1.0}));
}

TEST(Matrix64Product, ARowTimesAColumnIsTheSameCheckedOrNot) {
  const Matrix a = matrix({{1.0, 2.0, 3.0}});
  const Matrix b = matrix({{4.0}, {5.0}, {6.0}});
  EXPECT_EQ(stored(product(a, b, true).get()), Values{32.0});
  EXPECT_EQ(stored(product(a, b, false).get()), Values{32.0});
}

// Unchecked, a row of the result is as long as a has rows. With fewer columns
// than that, all rows but the first land beyond the storage.
TEST(Matrix64Product, UncheckedDropsWhatFallsOutsideTheStorage) {
  const Matrix a = matrix({{1.0, 2.0}, {3.0, 4.0}, {5.0, 6.0}});
  const Matrix b = matrix({{10.0}, {100.0}});
  const Matrix ab = product(a, b, false);
  EXPECT_EQ(ab->cols, 1);
  EXPECT_EQ(ab->rows, 3);
  EXPECT_EQ(stored(ab.get()), (Values{210.0, 0.0, 0.0}));
}

TEST(Matrix64Product, UncheckedLetsRowsOverlapWhenTheResultIsWide) {
  const Matrix a = matrix({{1.0, 0.0}, {0.0, 1.0}});
  const Matrix b = matrix({{1.0, 2.0, 3.0}, {10.0, 20.0, 30.0}});
  EXPECT_EQ(stored(product(a, b, false).get()), (Values{1.0, 2.0, 13.0, 20.0, 30.0, 0.0}));
}

RC_GTEST_PROP(Matrix64Product, UncheckedIsOrdinaryForSquaresAndForASingleRow, ()) {
  const int rows = *rc::gen::element(1, 2, 3, 4);
  const int inner = *rc::gen::inRange(1, 5);
  const int cols = rows == 1 ? *rc::gen::inRange(1, 5) : rows;
  const auto entries = *rc::gen::container<std::vector<int>>(
      static_cast<std::size_t>(rows * inner + inner * cols), rc::gen::inRange(-50, 51));
  const Matrix a = shaped(inner, rows);
  const Matrix b = shaped(cols, inner);
  std::size_t at = 0;
  for (int i = 0; i < rows * inner; ++i) a->data[i] = entries[at++];
  for (int i = 0; i < inner * cols; ++i) b->data[i] = entries[at++];
  // Small integers: every sum is exact.
  for (int r = 0; r < rows; ++r) {
    for (int c = 0; c < cols; ++c) {
      double sum = 0.0;
      for (int k = 0; k < inner; ++k)
        sum += matrix64_get(a.get(), k, r) * matrix64_get(b.get(), c, k);
      RC_ASSERT(matrix64_get(product(a, b, false).get(), c, r) == sum);
      RC_ASSERT(matrix64_get(product(a, b, true).get(), c, r) == sum);
    }
  }
}

// Also where factors are zero, and where 0 meets what is not finite.
RC_GTEST_PROP(Matrix64Product, IsTheSumOfAllItsTermsInTheirOrder, ()) {
  const auto rows = *rc::gen::inRange<std::size_t>(1, 6);
  const auto inner = *rc::gen::inRange<std::size_t>(1, 6);
  const auto cols = *rc::gen::inRange<std::size_t>(1, 6);
  const auto elements = [](std::size_t count) {
    return *rc::gen::container<Values>(count,
                                       rc::gen::weightedElement<double>({{8, 0.0},
                                                                         {4, 0.1},
                                                                         {4, -1e9},
                                                                         {4, 3e-7},
                                                                         {4, 7.0},
                                                                         {1, infinity},
                                                                         {1, not_a_number}}));
  };
  const Values x = elements(rows * inner);
  const Values y = elements(inner * cols);
  const Matrix a = shaped(static_cast<int32_t>(inner), static_cast<int32_t>(rows));
  const Matrix b = shaped(static_cast<int32_t>(cols), static_cast<int32_t>(inner));
  std::copy(x.begin(), x.end(), a->data);
  std::copy(y.begin(), y.end(), b->data);
  const Values found = stored(product(a, b, true).get());
  for (std::size_t row = 0; row < rows; ++row)
    for (std::size_t col = 0; col < cols; ++col) {
      double sum = 0.0;
      for (std::size_t k = 0; k < inner; ++k) sum += x[row * inner + k] * y[k * cols + col];
      const double value = found[row * cols + col];
      RC_ASSERT((std::isnan(sum) && std::isnan(value)) || value == sum);
    }
}

TEST(Matrix64Product, AProductReplacesWhatItsStorageHeld) {
  const Matrix a = matrix({{2.0}});
  const Matrix b = matrix({{3.0}});
  const Matrix result = matrix({{1000.0}});
  EXPECT_EQ(matrix64_multiply(result.get(), a.get(), b.get(), true), 0);
  EXPECT_EQ(stored(result.get()), Values{6.0});
  EXPECT_EQ(matrix64_multiply(result.get(), a.get(), b.get(), false), 0);
  EXPECT_EQ(stored(result.get()), Values{6.0});
  EXPECT_EQ(matrix64_multiply_correctly(result.get(), a.get(), b.get()), 0);
  EXPECT_EQ(stored(result.get()), Values{6.0});
}

TEST(Matrix64Product, UnfittingShapesAreRefused) {
  const Matrix result = matrix({{7.0, 8.0}});
  const Matrix a = shaped(3, 2);
  const Matrix b = shaped(3, 2);
  EXPECT_EQ(matrix64_multiply(result.get(), a.get(), b.get(), true), -1);
  EXPECT_EQ(matrix64_multiply(result.get(), a.get(), b.get(), false), -1);
  EXPECT_EQ(matrix64_multiply_correctly(result.get(), a.get(), b.get()), -1);
  EXPECT_EQ(result->cols, 2);
  EXPECT_EQ(result->rows, 1);
  EXPECT_EQ(stored(result.get()), (Values{7.0, 8.0}));
}

TEST(Matrix64Product, ARowTimesASquareByColumnsIsTheRow) {
  const Matrix a = matrix({{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 10.0}});
  const Matrix row = matrix({{1.0, 10.0, 100.0}});
  const Matrix result = product_by_columns(a, row);
  EXPECT_EQ(result->cols, 3);
  EXPECT_EQ(result->rows, 1);
  EXPECT_EQ(stored(result.get()), (Values{741.0, 852.0, 1063.0}));
}

TEST(Matrix64Product, ASquareTimesAColumnByColumnsIsTheColumn) {
  const Matrix column = matrix({{1.0}, {10.0}});
  const Matrix square = matrix({{1.0, 2.0}, {3.0, 4.0}});
  const Matrix result = product_by_columns(column, square);
  EXPECT_EQ(result->cols, 1);
  EXPECT_EQ(result->rows, 2);
  EXPECT_EQ(stored(result.get()), (Values{21.0, 43.0}));
}

TEST(Matrix64Product, SquaresByColumnsComeOutTransposed) {
  const Matrix a = matrix({{1.0, 2.0}, {3.0, 4.0}});
  const Matrix b = matrix({{0.0, 1.0}, {10.0, 0.0}});
  // b a = (3 4; 10 20), column after column.
  EXPECT_EQ(stored(product(b, a, true).get()), (Values{3.0, 4.0, 10.0, 20.0}));
  EXPECT_EQ(stored(product_by_columns(a, b).get()), (Values{3.0, 10.0, 4.0, 20.0}));
}

TEST(Matrix64Product, OblongProductsByColumnsAreStoredColumnAfterColumn) {
  const Matrix a = matrix({{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}});
  const Matrix b = matrix({{1.0, 0.0}, {0.0, 1.0}});
  const Matrix result = product_by_columns(a, b);
  EXPECT_EQ(result->cols, 3);
  EXPECT_EQ(result->rows, 2);
  EXPECT_EQ(stored(result.get()), (Values{1.0, 4.0, 2.0, 5.0, 3.0, 6.0}));
}

// The capacity is cut by hand: no sequence of calls leaves it too small.
TEST(Matrix64ProductDeathTest, CheckedStopsTheProgramBeforeWritingOutside) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const Matrix a = matrix({{1.0, 2.0}, {3.0, 4.0}});
  const Matrix result = shaped(2, 2);
  result->capacity = 3;
  EXPECT_DEATH(matrix64_multiply(result.get(), a.get(), a.get(), true),
               "index < product->capacity");
}

TEST(Matrix64Product, UncheckedRespectsACapacityCutShort) {
  const Matrix a = matrix({{1.0, 0.0}, {0.0, 1.0}});
  const Matrix b = matrix({{1.0, 2.0}, {3.0, 4.0}});
  const Matrix result = shaped(2, 2);
  result->capacity = 3;
  EXPECT_EQ(matrix64_multiply(result.get(), a.get(), b.get(), false), 0);
  EXPECT_EQ(stored(result.get()), (Values{1.0, 2.0, 3.0, 0.0}));
}

TEST(Matrix64Transpose, TurnsASquareAboutItsDiagonal) {
  const Matrix m = matrix({{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, {7.0, 8.0, 9.0}});
  const Matrix turned(matrix64_new());
  matrix64_transpose(m.get(), turned.get());
  EXPECT_EQ(stored(turned.get()), (Values{1.0, 4.0, 7.0, 2.0, 5.0, 8.0, 3.0, 6.0, 9.0}));
}

TEST(Matrix64Transpose, MakesARowOfAColumn) {
  const Matrix m = matrix({{1.0}, {2.0}, {3.0}});
  const Matrix turned(matrix64_new());
  matrix64_transpose(m.get(), turned.get());
  EXPECT_EQ(turned->cols, 3);
  EXPECT_EQ(turned->rows, 1);
  EXPECT_EQ(stored(turned.get()), (Values{1.0, 2.0, 3.0}));
}

// Element r of column c goes to place c * rows + r of a result with `rows` rows,
// which is a transposition for squares and columns only.
TEST(Matrix64Transpose, TakesOblongMatricesForSquaresAndFillsUpWithZeros) {
  const Matrix m = matrix({{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}});
  const Matrix turned(matrix64_new());
  matrix64_transpose(m.get(), turned.get());
  EXPECT_EQ(turned->cols, 2);
  EXPECT_EQ(turned->rows, 3);
  EXPECT_EQ(stored(turned.get()), (Values{1.0, 4.0, 0.0, 2.0, 5.0, 0.0}));
}

}  // namespace
