/**
 * Dense matrices of doubles. Shapes are columns by rows.
 *
 * Any shape will do, also without columns or rows. Exhausted memory raises
 * std::bad_alloc; every operation's destination is then as it was, in shape,
 * storage and elements.
 *
 * Unless a function says otherwise, its time grows with the number of elements of its
 * result, and each element is the exact result rounded once. A matrix whose shape is
 * refused is not read. Products allocate what they need to skip zeros.
 */
#ifndef FILTERMATH_MATRIX64_H
#define FILTERMATH_MATRIX64_H

#include "filtermath/linkage.h"

/**
 * A dense matrix of doubles. Element (column i, row j) is data[j * cols + i].
 * The record and its elements come from the host's memory calls.
 */
typedef struct _matrix64 {
  int32_t cols;
  int32_t rows;
  int32_t capacity; /**< cols * rows at the last reshape */
  double *data;     /**< row after row; null until the first reshape */
} _matrix64;

FILTERMATH_BEGIN

/** @return a new matrix of 0 x 0 without storage, the caller's to release with `matrix64_free`. */
_matrix64 *matrix64_new(void);

/** Releases a matrix and its elements; null is not accepted. */
void matrix64_free(_matrix64 *matrix);

/**
 * Reshapes a matrix. The same shape again changes nothing. Elements keep their
 * place in memory, not their row and column; elements gained are 0.0.
 */
void matrix64_resize(_matrix64 *matrix, int32_t cols, int32_t rows);

/** Makes dst a copy of src, reshaping it. */
void matrix64_copy(_matrix64 *dst, const _matrix64 *src);

/** Sets every element to 0.0. */
void matrix64_clear(_matrix64 *matrix);

/** @return the element in column i and row j, which must exist. */
double matrix64_get(const _matrix64 *matrix, int32_t i, int32_t j);

/** Sets the element in column i and row j, which must exist. */
void matrix64_set(_matrix64 *matrix, int32_t i, int32_t j, double value);

/** Makes the matrix the n x n identity; nothing but the shape for n < 1. */
void matrix64_identity(_matrix64 *matrix, int32_t n);

/**
 * product = a b. The product must be neither a nor b. Time grows with n m k at most: for
 * finite matrices, zeros are left out, in runs. Each element is a sum of k terms in ascending
 * order of k, and off by at most k roundings of the sum of their magnitudes.
 *
 * @param a        columns by rows: k x m
 * @param b        n x k
 * @param product  reshaped to n x m
 * @param checked  true: element (column j, row i) lands in its place,
 *                 i * n + j, and the program stops on an assertion should that
 *                 lie outside the storage. False: it lands at i * m + j, and
 *                 what falls outside the storage is dropped; this is the
 *                 ordinary product when m = n or m = 1, and only then.
 * @return 0, or -1 when a's columns are not b's rows (product untouched)
 */
int matrix64_multiply(_matrix64 *product, const _matrix64 *a, const _matrix64 *b, bool checked);

/**
 * product = b a, laid out column after column. The product must be neither a
 * nor b. Cost and rounding are those of `matrix64_multiply`, but zeros are not left out.
 *
 * @param a        columns by rows: m x k
 * @param b        k x n
 * @param product  reshaped to m x n; element (row j, column i) of b a is stored
 *                 at i * n + j. So a row b yields the row b a, a column a the
 *                 column b a, and two square matrices (b a) transposed.
 * @return 0, or -1 when a's rows are not b's columns (product untouched)
 */
int matrix64_multiply_correctly(_matrix64 *product, const _matrix64 *a, const _matrix64 *b);

/**
 * dst = src transposed, for a src that is square or has one column. For other
 * shapes dst gets the transposed shape, but its elements are those that the
 * square layout would name, and 0.0 where that lies outside src.
 */
void matrix64_transpose(const _matrix64 *src, _matrix64 *dst);

/**
 * dst = src^-1, block by block. dst may be src. Time grows with the cube of the
 * size, and with its square for blocks of a few rows that lead to few others.
 * It makes working copies of the size of src.
 *
 * Rows that lead to each other make a block, row i leading to j where element
 * (column j, row i) is not 0: the strongly connected components. Each is inverted
 * through LU decomposition with partial pivoting ([GvL] 3.4), and what joins it to
 * the blocks that it leads to follows by substitution. Without rounding this is
 * the inverse of the whole. With rounding, elements that are 0 by the pattern of
 * src alone are exactly 0.0, and the scale of one block costs another no digits. A
 * matrix without such zeros is a single block.
 *
 * The inverse of a block is off by about the rounding unit times its size and its condition
 * number; the condition of other blocks has no part in it.
 *
 * A singular src is not detected. Where elimination meets a pivot of exactly 0,
 * elements that are not finite fill the rows of that block, up to its own columns,
 * and spread to the rows that lead to it; other rows are what they are without it.
 * A NaN in src does the same. A pivot that only rounding keeps from 0 makes those
 * elements finite, large and meaningless.
 *
 * @return 0, or -1 when src is not square (dst untouched)
 */
int matrix64_inverse(_matrix64 *dst, const _matrix64 *src);

/**
 * result = a^-1 b, the product formed by `matrix64_multiply` with `checked`.
 * result must not be b. Cost and rounding are those of the inverse and the product;
 * a solution by elimination would lose less.
 *
 * @return 0, or -1 as that of the inverse or the product
 */
int matrix64_divide_left(_matrix64 *result, const _matrix64 *a, const _matrix64 *b, bool checked);

/** result = a b^-1 in the same way, not checked. result must not be a. */
int matrix64_divide_right(_matrix64 *result, const _matrix64 *a, const _matrix64 *b);

/** dst = s src; dst may be src. @return how many elements were written. */
int matrix64_scale(_matrix64 *dst, const _matrix64 *src, double s);

/** dst = a + b; dst may be either. @return 0, or -1 when the shapes differ (dst untouched). */
int matrix64_add(_matrix64 *dst, const _matrix64 *a, const _matrix64 *b);

/** dst = a - b; dst may be either. @return 0, or -1 when the shapes differ (dst untouched). */
int matrix64_subtract(_matrix64 *dst, const _matrix64 *a, const _matrix64 *b);

FILTERMATH_END

#endif
