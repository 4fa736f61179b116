#include "filtermath/complex64.h"

bool complex64_cmp(const std::complex<double> &x, const std::complex<double> &y) {
  if (x.real() < y.real() || x.real() > y.real()) return x.real() < y.real();
  return x.imag() > y.imag();
}

bool complex64_cmp_reverse(const std::complex<double> &x, const std::complex<double> &y) {
  if (x.real() < y.real() || x.real() > y.real()) return x.real() > y.real();
  return x.imag() < y.imag();
}

bool complex64pair_cmp(const t_complex64pair &x, const t_complex64pair &y) { return x.key < y.key; }

std::complex<double> filtermath_product(std::complex<double> a, std::complex<double> b) {
  return {a.real() * b.real() - b.imag() * a.imag(), b.real() * a.imag() + b.imag() * a.real()};
}
