/**
 * Coefficients of a digital filter: the polynomials of its transfer function,
 * and second-order sections.
 */
#ifndef FILTERMATH_COEFFICIENTS_H
#define FILTERMATH_COEFFICIENTS_H

#include "brontal/symbol.h"
#include "filtermath/records.h"

extern "C" {

// --- transfer functions
//
// Arrays of coefficients are in new storage from the host's memory calls, owned
// by the caller and released with `sysmem_freeptr`. The coefficient of z^0 comes
// first: H = (num[0] + num[1] z^-1 + ...) / (1 + den[1] z^-1 + ...).

/**
 * The denominator of a digital model: the characteristic polynomial of its A.
 * @param num, num_count  not used
 * @param den_count       receives n + 1
 */
void filtermath_ss2coefs(const _statespace *ss, double **num, int64_t *num_count, double **den,
                         int64_t *den_count);

/**
 * The numerator of a digital Butterworth filter: its zeros expanded, and scaled
 * so that sum(num[k] cos(k w)) equals sum(den[k] cos(k w)) at a reference w:
 * 0 (lowpass, bandstop), pi (highpass) or the centre w0 (bandpass). That is
 * unity gain there. At a centre where n (pi/2 - w0) is an odd multiple of pi/2,
 * such as a quarter of the Nyquist frequency at order 2, both sums are 0 and the
 * scale is what rounding leaves of them: a numerator of any size.
 *
 * The scale is a sum of denominator coefficients, which cancel at low cutoffs
 * too.
 *
 * @param order      of the prototype
 * @param den        as from `filtermath_ss2coefs`
 * @param den_count  not used; den holds as many values as the numerator will:
 *                   order + 1, or 2 order + 1 for the band responses
 * @param wo         as given to the frequency transformation
 */
void filtermath_buttnum(t_symbol *response, int order, const double *den, int64_t den_count,
                        double **num, int64_t *num_count, double wo);

/**
 * The same for Chebyshev type I, even orders scaled down to the ripple's bottom.
 * @param passband_ripple  in dB
 */
void filtermath_cheby1num(t_symbol *response, int order, const double *den, int64_t den_count,
                          double **num, int64_t *num_count, double wo, double passband_ripple);

/** The same for Chebyshev type II, from the transmission zeros and the gain D. */
void filtermath_cheby2num(const _statespace *ss, double **num, int64_t *num_count);

/**
 * Expands zeros, poles and gain. Imaginary parts are dropped, so roots must
 * come in conjugate pairs.
 * @param unused   may be null
 * @param b_count  receives the number of zeros + 1
 * @param a_count  receives the number of poles + 1
 */
void filtermath_zpk2tf(const t_zpk *zpk, void *unused, double **b, int64_t *b_count, double **a,
                       int64_t *a_count);

// --- second-order sections

/**
 * Groups a digital filter into sections b0 b1 b2 a1 a2, each
 * H = (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2).
 *
 * The pole pair nearest to the unit circle comes first. An odd number of poles
 * ends in a first-order section, stored with b2 = a2 = 0. The gain is in the
 * first section alone, and in none if that is of first order. The numerators of
 * Butterworth and Chebyshev type I filters are fixed by the response, except for
 * a bandstop; there, and for Chebyshev type II, each pole pair takes the nearest
 * pair of zeros left. Zeros that are missing count as lying at z = -1. Without
 * poles there are no sections.
 *
 * @param topology   the family; an unknown one is grouped like "chebyshev-2",
 *                   but with its zeros paired by halves, as those of the
 *                   all-pole families are
 * @param sos        receives new storage from the host's memory calls, owned by
 *                   the caller
 * @param sos_count  receives the number of doubles: five a section
 */
void filtermath_zpk2sos(const t_zpk *zpk, t_symbol *topology, t_symbol *response, double **sos,
                        int64_t *sos_count);

}  // extern "C"

#endif
