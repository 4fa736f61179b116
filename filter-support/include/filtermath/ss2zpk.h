/**
 * Zeros, poles and gain of a digital model.
 *
 * The arrays are flat root arrays, their counts in doubles, in new storage from the host's
 * memory calls: the caller's, and released with `sysmem_freeptr`. When memory runs out, none
 * is handed over.
 *
 * Poles are the eigenvalues of A, found for each group of states that lead to each other
 * alone: in the models of this library, a section. Each is off by a few roundings of its
 * section, whatever the others are; those of a whole design up to order 200 by at most 1e-13
 * (docs/accuracy.md). A model whose states all lead to each other is a single group, and its
 * poles are those of an A with elements off by a few roundings of the largest ([GvL] 7.5):
 * poles that crowd lose many digits. Time grows with the square of the number of states
 * where the groups are small, and with its cube for a single one. Conjugates are exact, and
 * neighbours, the upper first. Poles are NaN where A is not finite or the iteration
 * does not converge.
 */
#ifndef FILTERMATH_SS2ZPK_H
#define FILTERMATH_SS2ZPK_H

#include "brontal/symbol.h"
#include "filtermath/linkage.h"
#include "filtermath/statespace.h"

FILTERMATH_BEGIN

/**
 * Poles as above; zeros and gain are those of `filtermath_ss_tzero`, at its cost and with
 * its rounding. The number of zeros may differ from that of poles.
 * @param zero_count, pole_count  in doubles, two a root
 */
void filtermath_ss2zpk(const _statespace *ss, double **zeros, int64_t *zero_count, double **poles,
                       int64_t *pole_count, double *gain);

/**
 * The shortcut for designs from an all-pole prototype (Butterworth, Chebyshev
 * type I). The gain is D, as it stands. The zeros, as many as poles, are not computed but
 * put where the bilinear transform puts them: at z = -1 (lowpass), at 1 (highpass), half of
 * them at 1 and the rest at -1 (bandpass), and in turns at exp(+-2j atan(w0 / 4))
 * (bandstop), exact apart from the rounding of these.
 * @param zero_count, pole_count  in doubles, two a root
 * @param w0  the centre given to `filtermath_lp2bs`; unused otherwise
 */
void filtermath_ss2zpk_butterworth(const _statespace *ss, t_symbol *response, double **zeros,
                                   int64_t *zero_count, double **poles, int64_t *pole_count,
                                   double *gain, double w0);

FILTERMATH_END

#endif
