/** Complex values, their lists and their orders. */
#ifndef FILTERMATH_COMPLEX64_H
#define FILTERMATH_COMPLEX64_H

#include <complex>
#include <vector>

/** A list of complex values. */
using t_complex64list = std::vector<std::complex<double>>;

/** Two roots that share a section, with the key that they are sorted by. */
struct t_complex64pair {
  std::complex<double> first;
  std::complex<double> second;
  double key;
};

/**
 * Orders roots by ascending real part, equal ones by descending imaginary
 * part, so that of a conjugate pair the upper member comes first.
 * @return whether x goes before y
 */
bool complex64_cmp(const std::complex<double> &x, const std::complex<double> &y);

/** The reverse: descending real part, then ascending imaginary part. */
bool complex64_cmp_reverse(const std::complex<double> &x, const std::complex<double> &y);

/** Orders pairs by ascending key. */
bool complex64pair_cmp(const t_complex64pair &x, const t_complex64pair &y);

/** @return a b by the plain formula: no rescue of infinite or NaN operands. */
std::complex<double> filtermath_product(std::complex<double> a, std::complex<double> b);

#endif
