/**
 * What the tests of filtermath share: owners for its records, short ways to
 * make them, and responses computed without it.
 */
#ifndef TESTS_FILTER_SUPPORT_SUPPORT_H
#define TESTS_FILTER_SUPPORT_SUPPORT_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <numbers>
#include <utility>
#include <vector>

#include "brontal/memory.h"
#include "brontal/symbol.h"
#include "filtermath.h"
#include "watchdog.h"

namespace support {

using Complex = std::complex<double>;
using tests::Watchdog;

inline constexpr double pi = std::numbers::pi;
inline constexpr double infinity = std::numeric_limits<double>::infinity();
inline constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
inline constexpr Complex j{0.0, 1.0};

// --- owners ------------------------------------------------------------------

struct Release {
  void operator()(_matrix64 *matrix) const { matrix64_free(matrix); }
  void operator()(_statespace *model) const { statespace_free(model); }
  void operator()(t_zpk *zpk) const { zpk_free(zpk); }
};
using Matrix = std::unique_ptr<_matrix64, Release>;
using Model = std::unique_ptr<_statespace, Release>;
using Zpk = std::unique_ptr<t_zpk, Release>;

/** Receives an array and its count from filtermath, and releases it. */
class Flat {
 public:
  Flat() = default;
  Flat(const Flat &) = delete;
  Flat &operator=(const Flat &) = delete;
  ~Flat() { sysmem_freeptr(data); }

  std::vector<double> values() const { return {data, data + count}; }
  std::vector<Complex> roots() const {
    std::vector<Complex> list;
    for (int64_t i = 0; i + 1 < count; i += 2) list.emplace_back(data[i], data[i + 1]);
    return list;
  }

  double *data = nullptr;
  int64_t count = -1;
};

// --- making records ----------------------------------------------------------

inline Matrix shaped(int32_t cols, int32_t rows) {
  Matrix m(matrix64_new());
  matrix64_resize(m.get(), cols, rows);
  return m;
}

inline void fill(_matrix64 *m, const std::vector<std::vector<double>> &rows) {
  const auto cols = static_cast<int32_t>(rows.empty() ? 0 : rows[0].size());
  matrix64_resize(m, cols, static_cast<int32_t>(rows.size()));
  std::size_t at = 0;
  for (const auto &row : rows)
    for (const double value : row) m->data[at++] = value;
}

/** A matrix written as one sees it: a list of rows. */
inline Matrix matrix(const std::vector<std::vector<double>> &rows) {
  Matrix m(matrix64_new());
  fill(m.get(), rows);
  return m;
}

/** The elements as they lie in memory. */
inline std::vector<double> stored(const _matrix64 *m) {
  return {m->data, m->data + static_cast<std::ptrdiff_t>(m->cols) * m->rows};
}

/** A model from A, and B and C and D as plain numbers. */
inline Model model(const std::vector<std::vector<double>> &a, const std::vector<double> &b,
                   const std::vector<double> &c, double d) {
  Model ss(statespace_new());
  std::vector<std::vector<double>> column;
  for (const double value : b) column.push_back({value});
  fill(ss->a, a);
  if (column.empty())
    matrix64_resize(ss->b, 1, 0);
  else
    fill(ss->b, column);
  fill(ss->c, {c});
  fill(ss->d, {{d}});
  return ss;
}

inline Model copy(const _statespace *from) {
  Model to(statespace_new());
  matrix64_copy(to->a, from->a);
  matrix64_copy(to->b, from->b);
  matrix64_copy(to->c, from->c);
  matrix64_copy(to->d, from->d);
  return to;
}

inline Zpk zpk(const std::vector<Complex> &zeros, const std::vector<Complex> &poles,
               double gain = 1.0) {
  Zpk record(zpk_new());
  record->zeros = zeros;
  record->poles = poles;
  record->gain = gain;
  return record;
}

inline Zpk butterworth(int order) {
  t_zpk *out = nullptr;
  filtermath_buttap(order, &out);
  return Zpk(out);
}

inline Zpk chebyshev1(int order, double ripple_db) {
  t_zpk *out = nullptr;
  filtermath_cheby1ap(order, &out, ripple_db);
  return Zpk(out);
}

inline Zpk chebyshev2(int order, double attenuation_db) {
  t_zpk *out = nullptr;
  filtermath_cheby2ap(order, &out, attenuation_db);
  return Zpk(out);
}

inline Model realised(const Zpk &prototype) {
  Model ss(statespace_new());
  filtermath_zpk2ss(prototype.get(), ss.get());
  return ss;
}

// --- responses, computed without filtermath -----------------------------------

/** Solves m x = right by elimination; also yields det(m). Small systems only. */
inline std::vector<Complex> solved(std::vector<std::vector<Complex>> m, std::vector<Complex> right,
                                   Complex *determinant = nullptr) {
  const std::size_t n = m.size();
  Complex det = 1.0;
  for (std::size_t k = 0; k < n; ++k) {
    std::size_t pivot = k;
    for (std::size_t r = k + 1; r < n; ++r)
      if (std::abs(m[r][k]) > std::abs(m[pivot][k])) pivot = r;
    if (pivot != k) {
      std::swap(m[pivot], m[k]);
      std::swap(right[pivot], right[k]);
      det = -det;
    }
    det *= m[k][k];
    for (std::size_t r = k + 1; r < n; ++r) {
      const Complex factor = m[r][k] / m[k][k];
      for (std::size_t c = k; c < n; ++c) m[r][c] -= factor * m[k][c];
      right[r] -= factor * right[k];
    }
  }
  for (std::size_t k = n; k-- > 0;) {
    for (std::size_t c = k + 1; c < n; ++c) right[k] -= m[k][c] * right[c];
    right[k] /= m[k][k];
  }
  if (determinant != nullptr) *determinant = det;
  return right;
}

/** s I - matrix. */
inline std::vector<std::vector<Complex>> resolvent(const _matrix64 *a, Complex s) {
  const auto n = static_cast<std::size_t>(a->rows);
  std::vector<std::vector<Complex>> m(n, std::vector<Complex>(n));
  for (std::size_t r = 0; r < n; ++r)
    for (std::size_t c = 0; c < n; ++c) m[r][c] = (r == c ? s : 0.0) - a->data[r * n + c];
  return m;
}

/** det(s I - matrix). */
inline Complex characteristic(const _matrix64 *a, Complex s) {
  Complex det;
  solved(resolvent(a, s), std::vector<Complex>(static_cast<std::size_t>(a->rows)), &det);
  return det;
}

/** D + C (s I - A)^-1 B. */
inline Complex response(const _statespace *ss, Complex s) {
  const auto n = static_cast<std::size_t>(ss->a->rows);
  const std::vector<Complex> x =
      solved(resolvent(ss->a, s), std::vector<Complex>(ss->b->data, ss->b->data + n));
  Complex h = ss->d->data[0];
  for (std::size_t i = 0; i < n; ++i) h += ss->c->data[i] * x[i];
  return h;
}
inline Complex response(const Model &ss, Complex s) { return response(ss.get(), s); }

/** gain prod(s - zeros) / prod(s - poles). */
inline Complex response(const Zpk &filter, Complex s) {
  Complex h = filter->gain;
  for (const Complex zero : filter->zeros) h *= s - zero;
  for (const Complex pole : filter->poles) h /= s - pole;
  return h;
}

/** The polynomial with these coefficients, highest power first, at x. */
template <typename Number>
Complex polynomial(const std::vector<Number> &coefficients, Complex x) {
  Complex sum = 0.0;
  for (const Number &c : coefficients) sum = sum * x + c;
  return sum;
}

/** (num[0] + num[1] z^-1 + ...) / (den[0] + den[1] z^-1 + ...). */
inline Complex response(std::vector<double> num, std::vector<double> den, Complex z) {
  const std::vector<double> n(num.rbegin(), num.rend());
  const std::vector<double> d(den.rbegin(), den.rend());
  return polynomial(n, 1.0 / z) / polynomial(d, 1.0 / z);
}

/** A cascade of sections b0 b1 b2 a1 a2. */
inline Complex cascade_response(const std::vector<double> &sos, Complex z) {
  Complex h = 1.0;
  for (std::size_t k = 0; k + 5 <= sos.size(); k += 5)
    h *= response({sos[k], sos[k + 1], sos[k + 2]}, {1.0, sos[k + 3], sos[k + 4]}, z);
  return h;
}

inline double decibels(Complex h) { return 20.0 * std::log10(std::abs(h)); }

/** The point of the unit circle at a fraction w of the Nyquist frequency. */
inline Complex on_circle(double w) { return std::polar(1.0, pi * w); }

/** Where the bilinear transform at the sampling rate 2 finds that fraction. */
inline double prewarped(double w) { return 4.0 * std::tan(w * pi / 2.0); }

// --- comparisons ---------------------------------------------------------------

/** Equal up to `tolerance` of the larger of both, and of 1. */
inline testing::AssertionResult close(Complex x, Complex y, double tolerance) {
  const double scale = std::max({std::abs(x), std::abs(y), 1.0});
  if (std::abs(x - y) <= tolerance * scale) return testing::AssertionSuccess();
  return testing::AssertionFailure() << x << " and " << y << " differ by " << std::abs(x - y)
                                     << ", allowed " << tolerance * scale;
}

inline testing::AssertionResult close(const std::vector<double> &x, const std::vector<double> &y,
                                      double tolerance) {
  if (x.size() != y.size())
    return testing::AssertionFailure() << x.size() << " values against " << y.size();
  for (std::size_t i = 0; i < x.size(); ++i)
    if (!close(Complex(x[i]), Complex(y[i]), tolerance))
      return testing::AssertionFailure() << "value " << i << ": " << x[i] << " and " << y[i];
  return testing::AssertionSuccess();
}

inline bool finite(Complex x) { return std::isfinite(x.real()) && std::isfinite(x.imag()); }

}  // namespace support

#endif
