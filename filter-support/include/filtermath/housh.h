/** Householder reflections. */
#ifndef FILTERMATH_HOUSH_H
#define FILTERMATH_HOUSH_H

#include "filtermath/complex64.h"

/**
 * Makes the vector x of the Householder reflection I - beta x x^T that maps x
 * onto its j-th axis ([GvL] 5.1), in place. With a negative pivot x stays as it
 * is, and I - beta x x^T, with one over the squared length as beta, projects x out instead.
 * Time grows with the length of x, and nothing is allocated.
 *
 * A positive pivot is added to the length of x, which cancels nothing: beta and x are right to
 * a few roundings. Lengths whose squares overflow or underflow are not rescued.
 *
 * @param j        the pivot, counted from 1
 * @param tol      an x shorter than this, or of a length that is NaN, is left as it is and
 *                 reported as zero
 * @param beta     receives the factor (for a zero x: its squared length)
 * @param is_zero  receives 1.0 for a zero x and is not written otherwise
 */
void filtermath_ss_housh(t_complex64list &x, int j, double tol, double *beta, double *is_zero);

#endif
