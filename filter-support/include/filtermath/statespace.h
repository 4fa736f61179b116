/** A filter as a state-space model. */
#ifndef FILTERMATH_STATESPACE_H
#define FILTERMATH_STATESPACE_H

#include "filtermath/linkage.h"
#include "filtermath/matrix64.h"

/**
 * A single-input, single-output model x' = A x + B u, y = C x + D u with n
 * states, or the same with x' the next state. It owns its matrices. The functions that
 * take one need the shapes below, and do not look.
 */
typedef struct _statespace {
  _matrix64 *a; /**< n columns, n rows */
  _matrix64 *b; /**< 1 column, n rows */
  _matrix64 *c; /**< n columns, 1 row */
  _matrix64 *d; /**< 1 column, 1 row: the direct feed-through */
} _statespace;

FILTERMATH_BEGIN

/**
 * @return a new model of four matrices without columns, rows and storage, all from the
 * host's memory calls; release with `statespace_free`
 */
_statespace *statespace_new(void);

/** Releases a model and its matrices; null is not accepted. */
void statespace_free(_statespace *ss);

FILTERMATH_END

#endif
