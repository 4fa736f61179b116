/** Zeros, poles and gain of a digital model. */
#ifndef FILTERMATH_SS2ZPK_H
#define FILTERMATH_SS2ZPK_H

#include "brontal/symbol.h"
#include "filtermath/statespace.h"

extern "C" {

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

}  // extern "C"

#endif
