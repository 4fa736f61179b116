#include "filtermath/housh.h"

#include <cmath>

void filtermath_ss_housh(t_complex64list &x, int j, double tol, double *beta, double *is_zero) {
  double s = 0.0;
  for (const auto &value : x) s += value.real() * value.real() + value.imag() * value.imag();
  const std::complex<double> q = std::sqrt(std::complex<double>(s, 0.0));
  if (!(tol <= std::abs(q))) {
    *beta = s;
    *is_zero = 1.0;
    return;
  }
  std::complex<double> &pivot = x[static_cast<std::size_t>(j - 1)];
  // A negative pivot gets 0, not -1: x is then used as it is.
  const double sign = pivot.real() < 0.0 ? 0.0 : 1.0;
  const std::complex<double> t = sign * q;
  *beta = 1.0 / (pivot.real() * t.real() + s - t.imag() * pivot.imag());
  pivot += t;
}
