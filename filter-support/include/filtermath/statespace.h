/** A filter as a state-space model. */
#ifndef FILTERMATH_STATESPACE_H
#define FILTERMATH_STATESPACE_H

#include "filtermath/matrix64.h"

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

extern "C" {

/** @return a model of four matrices of 0 x 0; release with `statespace_free`. */
_statespace *statespace_new(void);

/** Releases a model and its matrices. */
void statespace_free(_statespace *ss);

}  // extern "C"

#endif
