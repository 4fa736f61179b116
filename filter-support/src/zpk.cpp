#include <algorithm>

#include "internal.h"

namespace {

t_complex64list from_flat(const double *values, int64_t count) {
  t_complex64list roots;
  roots.reserve(static_cast<std::size_t>(std::max<int64_t>(count / 2, 0)));
  for (int64_t offset = 0; offset < count; offset += 2)
    roots.emplace_back(values[offset], values[offset + 1]);
  return roots;
}

}  // namespace

t_zpk *zpk_new() { return new t_zpk; }

t_zpk *zpk_new_init(const double *zeros, int64_t zcount, const double *poles, int64_t pcount,
                    double gain) {
  return new t_zpk{from_flat(zeros, zcount), from_flat(poles, pcount), gain};
}

void zpk_free(t_zpk *zpk) { delete zpk; }

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
