#include <algorithm>
#include <cmath>

#include "internal.h"

using filtermath::Matrix;

namespace {

// Below this part of its terms a sum may have lost more digits than a product does.
constexpr double cancelled = 1e-3;

// What summing may leave of rounding, relative to the terms.
constexpr double rounding = 1e-14;

// I + factor A
void identity_plus(_matrix64 *sum, double factor, const _matrix64 *a) {
  matrix64_scale(sum, a, factor);
  for (int32_t i = 0; i < std::min(a->cols, a->rows); ++i)
    matrix64_set(sum, i, i, 1.0 + matrix64_get(sum, i, i));
}

double sum_of_magnitudes(const _matrix64 *d, const _matrix64 *row, const _matrix64 *column) {
  double sum = std::abs(d->data[0]);
  for (int32_t i = 0; i < std::min(row->capacity, column->capacity); ++i)
    sum += std::abs(row->data[i] * column->data[i]);
  return sum;
}

// D of a series of many sections is often far smaller than the terms that it is the
// sum of, and the rounding of these is all that is left. The sections' own ones are
// still known to nearly all digits, and so is their product. It may be anything in a
// model that is no such series, but is then not what the sum is.
void restore_feed_through(_statespace *ss, double terms) {
  double &sum = ss->d->data[0];
  if (!(std::abs(sum) < cancelled * terms)) return;
  const std::optional<double> product = filtermath::feed_through_of_sections(ss);
  if (product && std::abs(*product - sum) <= rounding * terms) sum = *product;
}

}  // namespace

// With M = I - (T/2) A and P = I + (T/2) A the digital model is M^-1 P,
// (T / sqrt T) M^-1 B, sqrt(T) C M^-1, D + (T/2) C M^-1 B.
void filtermath_bilinear(_statespace *ss, double fs) {
  const double t = 1.0 / fs;
  const double r = std::sqrt(t);
  Matrix p;
  Matrix m;
  Matrix h;
  Matrix k;
  Matrix l;
  identity_plus(p, 0.5 * t, ss->a);
  identity_plus(m, -0.5 * t, ss->a);
  matrix64_inverse(m, m);

  matrix64_scale(h, ss->b, 0.5 * t);
  matrix64_multiply(k, ss->c, m, false);
  matrix64_multiply(l, k, h, false);
  const double terms = sum_of_magnitudes(ss->d, k, h);
  matrix64_add(ss->d, ss->d, l);
  matrix64_scale(ss->c, k, r);

  matrix64_multiply(h, m, ss->b, true);
  matrix64_scale(ss->b, h, t / r);
  matrix64_multiply(ss->a, m, p, false);
  restore_feed_through(ss, terms);
}

void filtermath_ss2coefs(const _statespace *ss, double ** /*num*/, int64_t * /*num_count*/,
                         double **den, int64_t *den_count) {
  Matrix coefficients;
  filtermath_poly(ss->a, coefficients);
  const int64_t count = coefficients->rows;
  filtermath::Block block = filtermath::new_block(count);
  std::copy_n(coefficients->data, count, block.get());
  *den_count = count;
  *den = block.release();
}
