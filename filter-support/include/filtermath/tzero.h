/** Transmission zeros of a model. */
#ifndef FILTERMATH_TZERO_H
#define FILTERMATH_TZERO_H

#include "filtermath/statespace.h"
#include "filtermath/zpk.h"

extern "C" {

/**
 * The transmission zeros of a model, by reducing its system matrix [B A; D C]
 * with a Householder reflection to a pencil whose eigenvalues they are ([EvD]).
 * The pencil loses digits as D becomes small beside B. Those of a series of sections,
 * as the transformations of what `filtermath_zpk2ss` makes are, are found section by
 * section, and are as exact as its poles: if every number of the model is, but for a
 * few roundings, what it is in a series.
 *
 * @param ss            with |D| of at least 2.2204e-15 times the Frobenius norm
 *                      of A; below that the zeros are still computed, but mean
 *                      nothing
 * @param zpk           its zeros are replaced and its gain becomes D; its poles
 *                      are left alone. All is left alone for no states.
 * @param coefficients  true: instead of n zeros the list receives the n + 1
 *                      coefficients of the monic polynomial that has them
 */
void filtermath_ss_tzero(const _statespace *ss, t_zpk *zpk, bool coefficients);

/**
 * The first step of the reduction: finds whether the feed-through lets the
 * pencil be formed at once. The full staircase for models without
 * feed-through is not built: the step ends where that would begin.
 * @param S      the system matrix with the input column first
 * @param tol    a feed-through below this counts as none
 * @param ro, sigma  1 and 0 to look at the first input alone; with others all
 *               inputs from `sigma` on are looked at
 * @param m, p   numbers of inputs and outputs
 * @param n      number of states
 * @param mu, nu receive p and n: outputs and states left
 */
void filtermath_ss_tzreduce(const _matrix64 *S, int m, int n, int p, double tol, int ro, int sigma,
                            int *mu, int *nu);

}  // extern "C"

#endif
