/**
 * The digital half of a design: the bilinear transform, and zeros, poles and
 * gain from a digital model.
 */
#ifndef FILTERMATH_DIGITAL_H
#define FILTERMATH_DIGITAL_H

#include "brontal/symbol.h"
#include "filtermath/records.h"

extern "C" {

/**
 * Makes an analog model digital, in place, by the bilinear transform
 * s = 2 fs (z - 1) / (z + 1) ([OS] 7.2.2), sharing the factor 1 / fs between B
 * and C. There is no prewarping. The new D, a sum, keeps its digits in a series of
 * sections even where it is far smaller than its terms.
 * @param fs  sampling rate; a pole at 2 fs gives numbers that are not finite
 */
void filtermath_bilinear(_statespace *ss, double fs);

// --- zeros, poles and gain
//
// The arrays are flat root arrays in new storage from the host's memory calls,
// owned by the caller and released with `sysmem_freeptr`.

/**
 * Poles are the eigenvalues of A; zeros and gain are those of
 * `filtermath_ss_tzero`. The number of zeros may differ from that of poles.
 * @param zero_count, pole_count  in doubles
 */
void filtermath_ss2zpk(const _statespace *ss, double **zeros, int64_t *zero_count, double **poles,
                       int64_t *pole_count, double *gain);

/**
 * The shortcut for designs from an all-pole prototype (Butterworth, Chebyshev
 * type I). Poles are the eigenvalues of A, and the gain is D. The zeros, as many
 * as poles, are put where the bilinear transform puts them: at z = -1
 * (lowpass), at 1 (highpass), half of them at 1 and the rest at -1 (bandpass),
 * and in turns at exp(+-2j atan(w0 / 4)) (bandstop).
 * @param w0  the centre given to `filtermath_lp2bs`; unused otherwise
 */
void filtermath_ss2zpk_butterworth(const _statespace *ss, t_symbol *response, double **zeros,
                                   int64_t *zero_count, double **poles, int64_t *pole_count,
                                   double *gain, double w0);

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

/**
 * Makes the vector x of the Householder reflection I - beta x x^T that maps x
 * onto its j-th axis ([GvL] 5.1), in place. With a negative pivot x stays as it
 * is, and beta is one over its squared length, which is no such reflection.
 * @param j        the pivot, counted from 1
 * @param tol      an x shorter than this is left as it is and reported as zero
 * @param beta     receives the factor (for a zero x: its squared length)
 * @param is_zero  receives 1.0 for a zero x and is not written otherwise
 */
void filtermath_ss_housh(t_complex64list &x, int j, double tol, double *beta, double *is_zero);

#endif
