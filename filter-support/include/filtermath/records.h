/** A filter as zeros, poles and gain, and as a state-space model. */
#ifndef FILTERMATH_RECORDS_H
#define FILTERMATH_RECORDS_H

#include <complex>
#include <cstdint>
#include <vector>

#include "filtermath/matrix64.h"

/** A list of complex values. */
using t_complex64list = std::vector<std::complex<double>>;

/** A filter as zeros, poles and gain: gain * prod(s - zeros) / prod(s - poles). */
struct t_zpk {
  t_complex64list zeros;
  t_complex64list poles;
  double gain;
};

/**
 * A single-input, single-output model x' = A x + B u, y = C x + D u with n
 * states, or the same with x' the next state. It owns its matrices.
 */
struct _statespace {
  _matrix64 *a; /**< n x n */
  _matrix64 *b; /**< 1 x n: a column of n rows */
  _matrix64 *c; /**< n x 1: a row of n columns */
  _matrix64 *d; /**< 1 x 1: the direct feed-through */
};

/** Two roots that share a section, with the key that they are sorted by. */
struct t_complex64pair {
  std::complex<double> first;
  std::complex<double> second;
  double key;
};

extern "C" {

/** @return a record without zeros and poles, its gain unset; release with `zpk_free`. */
t_zpk *zpk_new(void);

/**
 * Makes a record from flat root arrays, copied in their order.
 * @param zcount, pcount  in doubles, even; 0 goes with a null array. With an odd one
 *                        the last root's imaginary part is read from behind it.
 */
t_zpk *zpk_new_init(const double *zeros, int64_t zcount, const double *poles, int64_t pcount,
                    double gain);

/** Releases a record; null is accepted. */
void zpk_free(t_zpk *zpk);

/** @return a model of four matrices of 0 x 0; release with `statespace_free`. */
_statespace *statespace_new(void);

/** Releases a model and its matrices. */
void statespace_free(_statespace *ss);

}  // extern "C"

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
