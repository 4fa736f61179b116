#include "filtermath/bilinear.h"

#include <algorithm>
#include <cmath>

#include "owners.h"
#include "series.h"
#include "shaped.h"

using filtermath::Matrix;
using filtermath::Shaped;

namespace {

// I + factor A
void identity_plus(_matrix64 *sum, double factor, const _matrix64 *a) {
  matrix64_scale(sum, a, factor);
  for (int32_t i = 0; i < std::min(a->cols, a->rows); ++i)
    matrix64_set(sum, i, i, 1.0 + matrix64_get(sum, i, i));
}

// With M = I - (T/2) A and P = I + (T/2) A the digital model is M^-1 P,
// (T / sqrt T) M^-1 B, sqrt(T) C M^-1, D + (T/2) C M^-1 B.
class Discretisation {
 public:
  explicit Discretisation(double t) : t_(t) {}

  void operator()(_statespace *ss) const {
    const double r = std::sqrt(t_);
    const int32_t n = ss->a->cols;
    Shaped p(n, n);
    Shaped m(n, n);
    Shaped h(1, n);
    Shaped k(n, 1);
    identity_plus(p, 0.5 * t_, ss->a);
    identity_plus(m, -0.5 * t_, ss->a);
    matrix64_inverse(m, m);

    matrix64_scale(h, ss->b, 0.5 * t_);
    matrix64_multiply(k, ss->c, m, false);
    ss->d->data[0] = fed_through(ss, k, h);
    matrix64_scale(ss->c, k, r);

    matrix64_multiply(h, m, ss->b, true);
    matrix64_scale(ss->b, h, t_ / r);
    matrix64_multiply(ss->a, m, p, false);
  }

 private:
  // D + (T/2) C M^-1 B, given K = C M^-1 and H = (T/2) B. Where most of D cancels, next to
  // nothing may be left of its digits; the inverse system has a large feed-through there,
  // in which nothing cancels. With N = A - B C / D, its state matrix, it is
  // (1 - C (I - (T/2) N)^-1 H / D) / D ([Kai] 2.2, and the matrix inversion lemma).
  double fed_through(const _statespace *ss, const _matrix64 *k, const _matrix64 *h) const {
    Shaped product(1, 1);
    matrix64_multiply(product, k, h, false);
    const double d = ss->d->data[0];
    const double sum = d + product->data[0];
    if (!(2.0 * std::abs(sum) < std::abs(d))) return sum;

    Matrix m;
    Matrix row;
    matrix64_copy(row, ss->c);
    std::for_each_n(row->data, row->cols, [d](double &c) { c /= d; });
    matrix64_multiply(m, ss->b, row, true);
    matrix64_subtract(m, ss->a, m);
    identity_plus(m, -0.5 * t_, m);
    matrix64_inverse(m, m);
    matrix64_multiply(row, ss->c, m, false);
    matrix64_multiply(product, row, h, false);
    const double restored = d / (1.0 - product->data[0] / d);
    return std::isfinite(restored) ? restored : sum;
  }

  double t_;
};

}  // namespace

void filtermath_bilinear(_statespace *ss, double fs) {
  filtermath::transform_sections(ss, Discretisation(1.0 / fs));
}
