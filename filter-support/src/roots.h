// Orders of roots.
#ifndef FILTERMATH_SRC_ROOTS_H
#define FILTERMATH_SRC_ROOTS_H

#include <complex>
#include <vector>

#include "filtermath/complex64.h"

namespace filtermath {

/** @return whether a root counts as real: an imaginary part of 0.0, or NaN. */
bool is_real(const std::complex<double> &root);

/** Sorts with `complex64_cmp`. Values that have no order, NaNs, go last. */
void sort_roots(t_complex64list &roots);

/**
 * Makes the members of each conjugate pair neighbours in a sorted list, the upper
 * first. They already are, unless several pairs share a real part.
 */
void join_conjugates(t_complex64list &sorted);

/**
 * Reorders roots so that `filtermath_poly` keeps its partial products small:
 * conjugate pairs, from both ends of the list in turn.
 * @param roots  conjugates are neighbours
 */
t_complex64list in_expanding_order(t_complex64list roots);

/** Sorts with `complex64pair_cmp`; equal keys keep their order, NaNs go last. */
void sort_pairs(std::vector<t_complex64pair> &pairs);

}  // namespace filtermath

#endif
