/** Transmission zeros of a model. */
#ifndef FILTERMATH_TZERO_H
#define FILTERMATH_TZERO_H

#include "filtermath/linkage.h"
#include "filtermath/statespace.h"
#include "filtermath/zpk.h"

FILTERMATH_BEGIN

/**
 * The transmission zeros of a model.
 *
 * Those of a series of sections, as the transformations of what `filtermath_zpk2ss` makes
 * are, are found section by section: the eigenvalues of A - B C / D, the state matrix of
 * the inverse system ([Kai] 2.2). They are as exact as the poles, provided that every number of the
 * model is, within a few roundings, what it is in a series: at most 7e-15 off up to order
 * 200 (docs/accuracy.md). Time grows with the square of the number of states.
 *
 * Those of other models come from the system matrix [B A; D C], reduced with a Householder
 * reflection to a pencil whose eigenvalues they are ([EvD]). The pencil loses digits as D
 * becomes small beside B. Time grows with the cube of the number of states.
 *
 * @param ss            with |D| of at least 2.2204e-15 times the Frobenius norm
 *                      of A; below that the zeros are still computed, but mean
 *                      nothing
 * @param zpk           its zeros are replaced and its gain becomes D; its poles
 *                      are left alone. All is left alone for a model without states. When
 *                      memory runs out, the gain may be D and the zeros be the old ones.
 *                      Zeros are NaN where they cannot be computed.
 * @param coefficients  true: instead of n zeros the list receives the n + 1
 *                      coefficients of the monic polynomial that has them, as
 *                      `filtermath_poly` expands them
 */
void filtermath_ss_tzero(const _statespace *ss, t_zpk *zpk, bool coefficients);

/**
 * The first step of the reduction: finds whether the feed-through lets the
 * pencil be formed at once. The full staircase for models without
 * feed-through is not built: the step ends where that would begin. Time grows with m.
 * @param S      the system matrix with the input column first: n + m columns, n + p rows;
 *               read only
 * @param m, p   numbers of inputs and outputs
 * @param n      number of states
 * @param tol    a feed-through below this counts as 0
 * @param ro, sigma  1 and 0 to look at the first input alone; with others all
 *               inputs from `sigma` on, counted from 1, are looked at
 * @param mu, nu receive p and n: outputs and states left
 */
void filtermath_ss_tzreduce(const _matrix64 *S, int m, int n, int p, double tol, int ro, int sigma,
                            int *mu, int *nu);

FILTERMATH_END

#endif
