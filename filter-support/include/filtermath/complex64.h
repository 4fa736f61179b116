/** Complex values: their lists, their orders and their product. */
#ifndef FILTERMATH_COMPLEX64_H
#define FILTERMATH_COMPLEX64_H

#include <complex>
#include <vector>

/** A list of complex values, in the storage of the C++ allocator. */
using t_complex64list = std::vector<std::complex<double>>;

/** Two roots that share a section, with the key that they are sorted by. */
struct t_complex64pair {
  std::complex<double> first;
  std::complex<double> second;
  double key;
};

// The orders are strict weak orders of values without NaNs, as the sorts of the standard
// library need them. With NaNs they are not, and such a sort may run out of its range.

/**
 * Orders roots by ascending real part, equal ones by descending imaginary
 * part, so that of a conjugate pair the upper member comes first. Real parts that cannot
 * be compared, because one is NaN, count as equal; so do 0.0 and -0.0.
 * @return whether x goes before y
 */
bool complex64_cmp(const std::complex<double> &x, const std::complex<double> &y);

/** The reverse: descending real part, then ascending imaginary part. */
bool complex64_cmp_reverse(const std::complex<double> &x, const std::complex<double> &y);

/** Orders pairs by ascending key. @return whether x goes before y */
bool complex64pair_cmp(const t_complex64pair &x, const t_complex64pair &y);

/**
 * @return a b by the plain formula. Infinite and NaN operands are not rescued as the
 * language's own product does it. Each part is rounded three times, so that a part far
 * smaller than its two terms has few digits; the distance to the exact product is at most
 * a few roundings of |a| |b|.
 */
std::complex<double> filtermath_product(std::complex<double> a, std::complex<double> b);

#endif
