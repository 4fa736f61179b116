#include "filtermath/tzero.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "filtermath/housh.h"
#include "filtermath/poly.h"
#include "irreducible.h"
#include "owners.h"
#include "scratch.h"
#include "series.h"

using filtermath::Matrix;

namespace {

constexpr double relative_tolerance = 2.2204e-15;

// The Frobenius norm of a square matrix, as the root of the trace of A^T A.
double frobenius_norm(const _matrix64 *a) {
  double trace = 0.0;
  for (int32_t column = 0; column < a->cols; ++column) {
    double sum = 0.0;
    for (int32_t row = 0; row < a->rows; ++row)
      sum += matrix64_get(a, column, row) * matrix64_get(a, column, row);
    trace += sum;
  }
  return std::sqrt(trace);
}

// [B A; D C]
void fill_system_matrix(_matrix64 *s, const _statespace *ss) {
  const int32_t n = ss->a->cols;
  matrix64_resize(s, n + 1, n + 1);
  for (int32_t row = 0; row < n; ++row) {
    matrix64_set(s, 0, row, ss->b->data[row]);
    for (int32_t column = 0; column < n; ++column)
      matrix64_set(s, column + 1, row, matrix64_get(ss->a, column, row));
  }
  matrix64_set(s, 0, n, ss->d->data[0]);
  for (int32_t column = 0; column < n; ++column)
    matrix64_set(s, column + 1, n, ss->c->data[column]);
}

// Transposed, and turned end for end: element (column j, row i) of the square
// matrix becomes element (column n - i, row n - j).
void pertranspose(_matrix64 *t, const _matrix64 *s) {
  const int32_t n = s->cols - 1;
  matrix64_resize(t, s->cols, s->rows);
  for (int32_t row = 0; row <= n; ++row)
    for (int32_t column = 0; column <= n; ++column)
      matrix64_set(t, n - row, n - column, matrix64_get(s, column, row));
}

// Replaces all rows but the last by [0 I], the pencil's second matrix. The last
// row still holds D and C.
void shift_identity(_matrix64 *s) {
  const int32_t n = s->cols - 1;
  std::fill_n(s->data, n * s->cols, 0.0);
  for (int32_t i = 0; i < n; ++i) matrix64_set(s, i + 1, i, 1.0);
}

// A negative pivot is left as it is, and x is then projected out, not reflected. If the
// pivot is next to nothing, the inverse that this leaves has lost its digits, while the one that
// the reflection of -x leaves keeps them.
bool is_short(double pivot, const t_complex64list &x) {
  constexpr double shortest = 1e-3;
  double squares = 0.0;
  for (const auto &value : x) squares += value.real() * value.real();
  return pivot < 0.0 && -pivot < shortest * std::sqrt(squares);
}

// Multiplies T and the first n rows of S by the reflection I - beta u u^T that
// maps the last row of T onto its last axis.
void reflect(_matrix64 *t, _matrix64 *s, double tol) {
  const int32_t n = t->cols - 1;
  const double *last_row = t->data + static_cast<std::ptrdiff_t>(n) * t->cols;
  t_complex64list x(last_row, last_row + t->cols);
  if (is_short(x.back().real(), x)) std::transform(x.begin(), x.end(), x.begin(), std::negate<>());
  double beta = 0.0;
  double is_zero = 0.0;
  filtermath_ss_housh(x, n + 1, tol, &beta, &is_zero);

  Matrix u;
  Matrix u_row;
  matrix64_resize(u, 1, n + 1);
  std::transform(x.begin(), x.end(), u->data, [](const auto &value) { return value.real(); });
  matrix64_transpose(u, u_row);

  // T - beta (T u) u^T. The product comes out transposed, and is turned back.
  Matrix w;
  Matrix v;
  matrix64_multiply_correctly(w, u, t);
  matrix64_multiply_correctly(v, u_row, w);
  matrix64_scale(v, v, beta);
  matrix64_transpose(v, w);
  matrix64_subtract(t, t, w);

  // The same for [0 I], whose product with u is u without its first element.
  Matrix tail;
  matrix64_resize(tail, 1, n);
  std::copy_n(u->data + 1, n, tail->data);
  matrix64_multiply(v, tail, u_row, true);
  matrix64_scale(v, v, beta);
  std::transform(s->data, s->data + v->capacity, v->data, s->data, std::minus<>());
}

void leading_block(_matrix64 *block, const _matrix64 *matrix, int32_t q) {
  matrix64_resize(block, q, q);
  for (std::ptrdiff_t row = 0; row < q; ++row)
    std::copy_n(matrix->data + row * matrix->cols, q, block->data + row * q);
}

// The zeros as eigenvalues of the pencil: reduced by a reflection to (Af, Bf) of the
// size of A, then Bf^-1 Af.
t_complex64list zeros_of_pencil(const _statespace *ss) {
  const int32_t n = ss->a->cols;
  const double tol = frobenius_norm(ss->a) * relative_tolerance;
  Matrix s;
  Matrix t;
  fill_system_matrix(s, ss);
  int outputs = 0;
  int states = 0;
  filtermath_ss_tzreduce(s, 1, n, 1, tol, 1, 0, &outputs, &states);
  pertranspose(t, s);
  shift_identity(s);
  reflect(t, s, tol);

  Matrix af;
  Matrix bf;
  Matrix inverse;
  Matrix quotient;
  leading_block(af, t, states);
  leading_block(bf, s, states);
  matrix64_inverse(inverse, bf);
  matrix64_multiply(quotient, inverse, af, false);
  return filtermath::eigenvalues(quotient);
}

// The zeros of a series are those of its sections: the eigenvalues of A - B C / D, the
// state matrix of the inverse system ([Kai] 2.2). Nothing if the model is not a series.
std::optional<t_complex64list> zeros_of_sections(const _statespace *ss) {
  filtermath::Scratch scratch;
  const filtermath::Series series = filtermath::sections_of(ss, &scratch);
  if (series.sections().empty()) return std::nullopt;
  Matrix quotient;
  matrix64_resize(quotient, ss->a->cols, ss->a->rows);
  matrix64_clear(quotient);
  int32_t begin = 0;
  for (const filtermath::Section &section : series.sections()) {
    const double *a = section.a;
    for (int32_t row = 0; row < section.n; ++row)
      for (int32_t column = 0; column < section.n; ++column)
        matrix64_set(quotient, begin + column, begin + row,
                     *a++ - section.b[row] * (section.c[column] / *section.d));
    begin += section.n;
  }
  return filtermath::eigenvalues(quotient);
}

}  // namespace

void filtermath_ss_tzreduce(const _matrix64 *S, int m, int n, int p, double tol, int ro, int sigma,
                            int *mu, int *nu) {
  *mu = p;
  *nu = n;
  if (p == 0) return;
  const int first = sigma == 0 ? 1 : sigma;
  const bool one_is_enough = ro + 1 - (sigma == 0 ? 1 : 0) == 1;
  for (int i = first - 1; i < m; ++i) {
    t_complex64list element{S->data[(n + 1) * n + i]};
    double beta = 0.0;
    double is_zero = 0.0;
    filtermath_ss_housh(element, 1, tol, &beta, &is_zero);
    // Without feed-through the rank would have to be revealed by a staircase;
    // looking at the same element again could only repeat itself for ever.
    if (is_zero != 0.0 || one_is_enough) return;
  }
}

void filtermath_ss_tzero(const _statespace *ss, t_zpk *zpk, bool coefficients) {
  if (ss->a->cols == 0) return;
  zpk->gain = ss->d->data[0];
  std::optional<t_complex64list> zeros = zeros_of_sections(ss);
  zpk->zeros = zeros ? std::move(*zeros) : zeros_of_pencil(ss);
  if (coefficients) {
    t_complex64list expanded;
    filtermath_poly(zpk->zeros, expanded);
    std::transform(expanded.begin(), expanded.end(), expanded.begin(),
                   [](const auto &coefficient) { return coefficient.real(); });
    zpk->zeros = std::move(expanded);
  }
}
