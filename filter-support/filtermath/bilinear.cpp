#include <algorithm>
#include <cmath>

#include "internal.h"

using filtermath::Matrix;

// With M = I - (T/2) A and P = I + (T/2) A the digital model is M^-1 P,
// (T / sqrt T) M^-1 B, sqrt(T) C M^-1, D + (T/2) C M^-1 B.
void filtermath_bilinear(_statespace *ss, double fs) {
  const double t = 1.0 / fs;
  const double r = std::sqrt(t);
  Matrix p;
  Matrix m;
  Matrix identity;
  Matrix h;
  Matrix k;
  Matrix l;
  matrix64_identity(identity, ss->a->cols);
  matrix64_scale(h, ss->a, 0.5 * t);
  matrix64_add(p, identity, h);
  matrix64_subtract(m, identity, h);
  matrix64_inverse(m, m);

  matrix64_scale(h, ss->b, 0.5 * t);
  matrix64_multiply(k, ss->c, m, false);
  matrix64_multiply(l, k, h, false);
  matrix64_add(ss->d, ss->d, l);
  matrix64_scale(ss->c, k, r);

  matrix64_multiply(h, m, ss->b, true);
  matrix64_scale(ss->b, h, t / r);
  matrix64_multiply(ss->a, m, p, false);
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
