// The product of matrices that are mostly zeros.
#ifndef FILTERMATH_SRC_SPARSE_PRODUCT_H
#define FILTERMATH_SRC_SPARSE_PRODUCT_H

#include <cstdint>
#include <vector>

namespace filtermath {

/**
 * Elements `begin` to `end` - 1 of a row, none of them zero. One that begins at the
 * row's end is empty, and closes the row.
 */
struct Run {
  int32_t begin;
  int32_t end;
};

/** @return the runs of a matrix of rows x cols, row after row. */
std::vector<Run> runs_of(const double *matrix, int32_t rows, int32_t cols);

/**
 * Adds a product to what `sum` holds, each element's terms in their order. Factors
 * that are 0 are left out, so all others must be finite. Nothing is allocated.
 * @param a     rows x inner, row after row
 * @param b     inner x cols
 * @param runs  those of b
 * @param sum   rows x cols; must be neither factor
 */
void add_product(const double *a, const double *b, const std::vector<Run> &runs, double *sum,
                 int32_t rows, int32_t inner, int32_t cols);

/** @return false if any of `count` elements is NaN or infinite. */
bool all_finite(const double *elements, int64_t count);

}  // namespace filtermath

#endif
