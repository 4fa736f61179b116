#include "filtermath/transformations.h"

#include <algorithm>

#include "filtermath/known_symbol.h"
#include "owners.h"
#include "series.h"
#include "shaped.h"

using filtermath::Matrix;
using filtermath::Shaped;

namespace {

// Copies the square matrix `block` into `matrix` with its first element in the
// given column and row.
void put_block(_matrix64 *matrix, const _matrix64 *block, int32_t column, int32_t row) {
  for (int32_t j = 0; j < block->rows; ++j)
    for (int32_t i = 0; i < block->cols; ++i)
      matrix64_set(matrix, column + i, row + j, matrix64_get(block, i, j));
}

// Makes `matrix` twice as long in one dimension: the values, then zeros.
void pad(_matrix64 *matrix, const _matrix64 *values, int32_t cols, int32_t rows) {
  matrix64_resize(matrix, cols, rows);
  matrix64_clear(matrix);
  std::copy_n(values->data, values->cols * values->rows, matrix->data);
}

// a = [block, wo I; -wo I, 0], of twice the size of `block`: what substituting
// (s^2 + wo^2) / s for s gives, each state tied to a second one.
void tie_states(_matrix64 *a, const _matrix64 *block, double wo) {
  const int32_t n = block->cols;
  matrix64_resize(a, 2 * n, 2 * n);
  matrix64_clear(a);
  put_block(a, block, 0, 0);
  for (int32_t i = 0; i < n; ++i) {
    matrix64_set(a, n + i, i, wo);
    matrix64_set(a, i, n + i, -wo);
  }
}

// A = wo A^-1, B = -wo A^-1 B, C = C A^-1, D = D - C A^-1 B
void invert_frequencies(_statespace *ss, double wo) {
  const int32_t n = ss->a->cols;
  Shaped inverse(n, n);
  Shaped row(n, 1);
  Shaped column(1, n);
  Shaped product(1, 1);
  matrix64_inverse(inverse, ss->a);
  matrix64_multiply_correctly(row, inverse, ss->c);
  matrix64_copy(ss->c, row);
  matrix64_multiply_correctly(product, ss->b, ss->c);
  ss->d->data[0] -= product->data[0];
  matrix64_multiply_correctly(column, ss->b, inverse);
  matrix64_scale(ss->b, column, -wo);
  matrix64_scale(ss->a, inverse, wo);
}

// C A^-1 B, given C A^-1. Only four states are multiplied out; otherwise it is the first
// element of C A^-1, which is the same number where B is (1, 0, ..., 0).
double fed_through_inverted(const _matrix64 *c, const _matrix64 *b) {
  if (c->cols == 4 && b->rows == 4) {
    Matrix product;
    matrix64_multiply_correctly(product, b, c);
    return product->data[0];
  }
  return c->capacity > 0 ? c->data[0] : 0.0;
}

}  // namespace

void filtermath_lp2lp(_statespace *ss, double wo) {
  matrix64_scale(ss->a, ss->a, wo);
  matrix64_scale(ss->b, ss->b, wo);
}

void filtermath_lp2hp(_statespace *ss, double wo) {
  filtermath::transform_sections(ss, [wo](_statespace *part) { invert_frequencies(part, wo); });
}

void filtermath_lp2bp(_statespace *ss, double wo, double bw) {
  const double q = bw / wo;
  Matrix scaled;
  matrix64_scale(scaled, ss->a, q);
  matrix64_scale(scaled, scaled, wo);
  tie_states(ss->a, scaled, wo);

  matrix64_scale(scaled, ss->b, q);
  matrix64_scale(scaled, scaled, wo);
  pad(ss->b, scaled, scaled->cols, 2 * scaled->rows);

  matrix64_copy(scaled, ss->c);
  pad(ss->c, scaled, 2 * scaled->cols, scaled->rows);
}

// Inverted with bw, and then each state tied to a second one as in a bandpass.
void filtermath_lp2bs(_statespace *ss, t_symbol *topology, double wo, double bw) {
  const bool chebyshev2 = topology == filtermath::required_symbol<"chebyshev-2">();
  Matrix b;
  matrix64_copy(b, ss->b);
  const double d = ss->d->data[0];
  filtermath_lp2hp(ss, bw);
  ss->d->data[0] = chebyshev2 ? 1.0 : d - fed_through_inverted(ss->c, b);

  Matrix half;
  matrix64_copy(half, ss->a);
  tie_states(ss->a, half, wo);
  matrix64_copy(half, ss->b);
  pad(ss->b, half, half->cols, 2 * half->rows);
  matrix64_copy(half, ss->c);
  pad(ss->c, half, 2 * half->cols, half->rows);
}
