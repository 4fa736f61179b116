// Matrices whose rows lead to few columns: what the structure of a cascade is
// worth for its inverse and its eigenvalues.

#include <algorithm>
#include <cmath>
#include <limits>

#include "irreducible.h"
#include "support.h"

using Complex = std::complex<double>;

namespace {

// A cascade of n sections on the same pair of poles, each driven by the one
// before: as far from normal as cascades come, with all eigenvalues known.
_matrix64 *cascade(int32_t sections, double radius, double angle, double coupling) {
  const int32_t n = 2 * sections;
  _matrix64 *matrix = matrix64_new();
  matrix64_resize(matrix, n, n);
  matrix64_clear(matrix);
  for (int32_t k = 0; k < n; k += 2) {
    matrix64_set(matrix, k, k, radius * std::cos(angle));
    matrix64_set(matrix, k + 1, k, -radius * std::sin(angle));
    matrix64_set(matrix, k, k + 1, radius * std::sin(angle));
    matrix64_set(matrix, k + 1, k + 1, radius * std::cos(angle));
    for (int32_t column = 0; column < k; ++column) matrix64_set(matrix, column, k, coupling);
  }
  return matrix;
}

}  // namespace

TEST(IrreducibleInverse, KeepsStructuralZerosExact) {
  const support::Matrix matrix(cascade(20, 0.9, 0.3, 5.0));
  support::Matrix inverse(matrix64_new());
  ASSERT_EQ(matrix64_inverse(inverse.get(), matrix.get()), 0);
  for (int32_t row = 0; row < 40; ++row)
    for (int32_t column = row + 1 + (row % 2 == 0 ? 1 : 0); column < 40; ++column)
      EXPECT_EQ(matrix64_get(inverse.get(), column, row), 0.0) << column << ", " << row;
}

TEST(IrreducibleInverse, TimesTheMatrixIsTheIdentity) {
  const support::Matrix matrix(cascade(6, 0.9, 0.3, 0.5));
  support::Matrix inverse(matrix64_new());
  support::Matrix product(matrix64_new());
  matrix64_inverse(inverse.get(), matrix.get());
  matrix64_multiply(product.get(), inverse.get(), matrix.get(), true);
  for (int32_t row = 0; row < 12; ++row)
    for (int32_t column = 0; column < 12; ++column)
      EXPECT_NEAR(matrix64_get(product.get(), column, row), row == column ? 1.0 : 0.0, 1e-10);
}

// Row 0 stands alone. Rows 1 and 2 are the block, and lead to 0. Row 3 leads to 0 and
// 4 to the block.
TEST(IrreducibleInverse, OfASingularBlockIsNotFiniteInRowsThatLeadToIt) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  using Block = std::vector<double>;
  for (const Block &block : {Block{1, 2, 2, 4}, Block{nan, 1, 1, 1}}) {
    const support::Matrix m = support::matrix({{2, 0, 0, 0, 0},
                                               {1, block[0], block[1], 0, 0},
                                               {0, block[2], block[3], 0, 0},
                                               {1, 0, 0, 4, 0},
                                               {0, 1, 0, 0, 5}});
    ASSERT_EQ(matrix64_inverse(m.get(), m.get()), 0);
    const std::vector<double> found = support::stored(m.get());
    const auto row = [&](std::ptrdiff_t index) {
      return std::vector<double>(found.begin() + 5 * index, found.begin() + 5 * (index + 1));
    };
    EXPECT_EQ(row(0), (std::vector<double>{0.5, 0, 0, 0, 0}));
    EXPECT_EQ(row(3), (std::vector<double>{-0.125, 0, 0, 0.25, 0}));
    for (const std::ptrdiff_t spoilt : {1, 2, 4}) {
      EXPECT_FALSE(std::isfinite(row(spoilt)[1]) && std::isfinite(row(spoilt)[2])) << spoilt;
      EXPECT_EQ(row(spoilt)[3], 0.0) << spoilt;
    }
    EXPECT_EQ(row(4)[4], 0.2);
  }
}

// 1e200 and 1e-200 would not survive one elimination of the whole.
TEST(IrreducibleInverse, OfOneBlockDoesNotDependOnTheScaleOfAnother) {
  const support::Matrix m = support::matrix(
      {{4e200, 7e200, 0, 0}, {2e200, 6e200, 0, 0}, {1, 0, 4e-200, 7e-200}, {0, 1, 2e-200, 6e-200}});
  const support::Matrix inverse(matrix64_new());
  ASSERT_EQ(matrix64_inverse(inverse.get(), m.get()), 0);
  const double expected[] = {0.6, -0.7, -0.2, 0.4};
  for (int32_t row = 0; row < 2; ++row)
    for (int32_t column = 0; column < 2; ++column) {
      const double element = expected[2 * row + column];
      EXPECT_NEAR(matrix64_get(inverse.get(), column, row) * 1e200, element, 1e-15);
      EXPECT_NEAR(matrix64_get(inverse.get(), column + 2, row + 2) * 1e-200, element, 1e-15);
      EXPECT_EQ(matrix64_get(inverse.get(), column + 2, row), 0.0);
    }
}

// A QR iteration on the whole matrix is off by more than 1 here.
TEST(IrreducibleEigenvalues, OfARepeatedSectionAreExact) {
  const support::Matrix matrix(cascade(30, 0.9, 0.3, 5.0));
  const t_complex64list values = filtermath::eigenvalues(matrix.get());
  ASSERT_EQ(values.size(), 60U);
  for (std::size_t i = 0; i < values.size(); i += 2) {
    EXPECT_LT(std::abs(values[i] - std::polar(0.9, 0.3)), 1e-15);
    EXPECT_EQ(values[i + 1], std::conj(values[i])) << "conjugates are exact, and neighbours";
  }
}

TEST(IrreducibleEigenvalues, AreAllThereWhenReordered) {
  support::Matrix matrix(matrix64_new());
  matrix64_identity(matrix.get(), 7);
  for (int32_t i = 0; i < 7; ++i) matrix64_set(matrix.get(), i, i, i);
  t_complex64list values = filtermath::eigenvalues(matrix.get());
  std::sort(values.begin(), values.end(), complex64_cmp);
  for (std::size_t i = 0; i < 7; ++i) EXPECT_EQ(values[i], Complex(static_cast<double>(i)));
}
