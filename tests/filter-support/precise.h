/**
 * Zeros of models in 60 digits, and by the plain pencil in doubles: what the zeros that
 * filtermath finds are judged by.
 */
#ifndef TESTS_FILTER_SUPPORT_PRECISE_H
#define TESTS_FILTER_SUPPORT_PRECISE_H

// The multiprecision type is written for older compilers.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wdeprecated-copy"
#include <Eigen/Dense>
#include <unsupported/Eigen/MPRealSupport>
#pragma GCC diagnostic pop

#include "support.h"

namespace precise {

using mpfr::mpreal;
using support::Complex;

/** Decimal digits that a computation is made with; the bits that hold them. */
inline constexpr int digits = 60;

template <typename Number>
using Matrix = Eigen::Matrix<Number, Eigen::Dynamic, Eigen::Dynamic>;
template <typename Number>
using Vector = Eigen::Matrix<Number, Eigen::Dynamic, 1>;

/** The numbers of a model, as numbers of another kind. */
template <typename Number>
struct Numbers {
  explicit Numbers(const _statespace *ss)
      : a(ss->a->rows, ss->a->rows), b(ss->a->rows), c(ss->a->rows), d(ss->d->data[0]) {
    for (int32_t row = 0; row < ss->a->rows; ++row) {
      for (int32_t column = 0; column < ss->a->rows; ++column)
        a(row, column) = matrix64_get(ss->a, column, row);
      b(row) = ss->b->data[row];
      c(row) = ss->c->data[row];
    }
  }
  Matrix<Number> a;
  Vector<Number> b;
  Vector<Number> c;
  Number d;
};

inline std::vector<Complex> rounded(const Eigen::EigenSolver<Matrix<mpreal>> &solver) {
  std::vector<Complex> list;
  for (const auto &value : solver.eigenvalues())
    list.emplace_back(value.real().toDouble(), value.imag().toDouble());
  return list;
}

/** The zeros of a model with D other than 0: the eigenvalues of A - B C / D. */
inline std::vector<Complex> zeros(const _statespace *ss) {
  mpreal::set_default_prec(mpfr::digits2bits(digits));
  const Numbers<mpreal> m(ss);
  const Matrix<mpreal> inverse = m.a - m.b * (m.c / m.d).transpose();
  return rounded(Eigen::EigenSolver<Matrix<mpreal>>(inverse, false));
}

/** D of a model after the bilinear transform at a sampling rate of 2. */
inline double discrete_feed_through(const _statespace *ss) {
  mpreal::set_default_prec(mpfr::digits2bits(digits));
  const Numbers<mpreal> s(ss);
  const Matrix<mpreal> m = Matrix<mpreal>::Identity(s.a.rows(), s.a.rows()) - s.a / 4;
  const Vector<mpreal> x = m.partialPivLu().solve(s.b);
  return mpreal(s.d + s.c.dot(x) / 4).toDouble();
}

/**
 * The zeros by the pencil as it is written down, in doubles: [B A; D C] turned end for
 * end, a Householder vector that leaves a negative pivot as it is, and the eigenvalues
 * of Bf^-1 Af.
 */
inline std::vector<Complex> pencil_zeros(const _statespace *ss) {
  const Numbers<double> m(ss);
  const Eigen::Index n = m.a.rows();
  Matrix<double> t(n + 1, n + 1);
  t << m.c.reverse(), m.a.reverse().transpose(), m.d, m.b.reverse().transpose();

  Vector<double> u = t.row(n).transpose();
  const double squares = u.squaredNorm();
  const double length = u(n) < 0.0 ? 0.0 : std::sqrt(squares);
  const double beta = 1.0 / (u(n) * length + squares);
  u(n) += length;
  t -= beta * (t * u) * u.transpose();
  Matrix<double> z = Matrix<double>::Zero(n, n + 1);
  z.rightCols(n).setIdentity();
  z -= beta * u.tail(n) * u.transpose();

  const Matrix<double> quotient = z.leftCols(n).inverse() * t.topLeftCorner(n, n);
  const Eigen::EigenSolver<Matrix<double>> solver(quotient, false);
  return {solver.eigenvalues().begin(), solver.eigenvalues().end()};
}

/**
 * How far each list is from the other at most, relative to roots of more than 1.
 * Infinite if they differ in length or a root of either is NaN.
 */
inline double distance(const std::vector<Complex> &x, const std::vector<Complex> &y) {
  if (x.size() != y.size()) return support::infinity;
  double worst = 0.0;
  for (const auto &[from, to] : {std::pair{x, y}, std::pair{y, x}}) {
    for (const Complex root : from) {
      double nearest = support::infinity;
      for (const Complex other : to)
        nearest = std::min(nearest, std::abs(root - other) / std::max(1.0, std::abs(root)));
      worst = std::max(worst, nearest);
    }
  }
  return worst;
}

}  // namespace precise

#endif
