#include "filtermath/bilinear.h"

#include <algorithm>
#include <cmath>

#include "owners.h"
#include "series.h"

using filtermath::Matrix;

namespace {

// I + factor A
void identity_plus(_matrix64 *sum, double factor, const _matrix64 *a) {
  matrix64_scale(sum, a, factor);
  for (int32_t i = 0; i < std::min(a->cols, a->rows); ++i)
    matrix64_set(sum, i, i, 1.0 + matrix64_get(sum, i, i));
}

// With M = I - (T/2) A and P = I + (T/2) A the digital model is M^-1 P,
// (T / sqrt T) M^-1 B, sqrt(T) C M^-1, D + (T/2) C M^-1 B.
//
// One object serves all sections of a series: its matrices keep their storage.
class Discretisation {
 public:
  explicit Discretisation(double t) : t_(t) {}

  void operator()(_statespace *ss) {
    const double r = std::sqrt(t_);
    identity_plus(p_, 0.5 * t_, ss->a);
    identity_plus(m_, -0.5 * t_, ss->a);
    matrix64_inverse(m_, m_);

    matrix64_scale(h_, ss->b, 0.5 * t_);
    matrix64_multiply(k_, ss->c, m_, false);
    ss->d->data[0] = fed_through(ss);
    matrix64_scale(ss->c, k_, r);

    matrix64_multiply(h_, m_, ss->b, true);
    matrix64_scale(ss->b, h_, t_ / r);
    matrix64_multiply(ss->a, m_, p_, false);
  }

 private:
  // D + (T/2) C M^-1 B, given K = C M^-1 and H = (T/2) B. Where most of D cancels, next to
  // nothing may be left of its digits; the inverse system has a large feed-through there,
  // in which nothing cancels. With N = A - B C / D, its state matrix, it is
  // (1 - C (I - (T/2) N)^-1 H / D) / D ([Kai] 2.2, and the matrix inversion lemma).
  double fed_through(const _statespace *ss) {
    matrix64_multiply(product_, k_, h_, false);
    const double d = ss->d->data[0];
    const double sum = d + product_->data[0];
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
    matrix64_multiply(product_, row, h_, false);
    const double restored = d / (1.0 - product_->data[0] / d);
    return std::isfinite(restored) ? restored : sum;
  }

  double t_;
  Matrix p_;
  Matrix m_;
  Matrix h_;
  Matrix k_;
  Matrix product_;
};

}  // namespace

void filtermath_bilinear(_statespace *ss, double fs) {
  filtermath::transform_sections(ss, Discretisation(1.0 / fs));
}
