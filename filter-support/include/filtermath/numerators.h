/**
 * The numerators of digital filters, one function for each family.
 *
 * Each array holds the coefficients num[0] + num[1] z^-1 + ..., the one of z^0 first, in new
 * storage from the host's memory calls; it is the caller's and released with
 * `sysmem_freeptr`. Counts count doubles. When memory runs out, what the pointers lead to is
 * left alone. Time grows with the square of the number of zeros.
 */
#ifndef FILTERMATH_NUMERATORS_H
#define FILTERMATH_NUMERATORS_H

#include "brontal/symbol.h"
#include "filtermath/linkage.h"
#include "filtermath/statespace.h"

FILTERMATH_BEGIN

/**
 * The numerator of a digital Butterworth filter: its zeros expanded, and scaled
 * so that sum(num[k] cos(k w)) equals sum(den[k] cos(k w)) at a reference w:
 * 0 (lowpass, bandstop), pi (highpass) or the centre w0 (bandpass). That is unity gain there,
 * except for a bandpass, whose sines are left out.
 *
 * The shape is right to a few roundings. The scale is a sum of denominator coefficients,
 * which cancel at low cutoffs (highpass: at high ones) until nothing is left of it. At 240 Hz, for
 * 48000 Hz, that of a Butterworth lowpass is off by 4e-06 at order 6 and by 7e-03 at order 8
 * (docs/accuracy.md, "The numerator at low cutoffs"), while the gain of the sections is right. At a
 * centre of a bandpass where n (pi/2 - w0) is an odd multiple of pi/2, such as a quarter of the
 * Nyquist frequency at order 2, both sums are 0 and the scale is what rounding leaves of them: a
 * numerator of any size.
 *
 * @param response   of the filter
 * @param order      of the prototype
 * @param den        as from `filtermath_ss2coefs`: as many doubles as the numerator will
 *                   have, order + 1, or 2 order + 1 for the band responses
 * @param den_count  not used
 * @param num_count  receives how many
 * @param wo         as given to the frequency transformation; unused for a lowpass and a
 *                   highpass
 */
void filtermath_buttnum(t_symbol *response, int order, const double *den, int64_t den_count,
                        double **num, int64_t *num_count, double wo);

/**
 * The same for Chebyshev type I, even orders scaled down to the ripple's bottom.
 * @param passband_ripple  in dB
 */
void filtermath_cheby1num(t_symbol *response, int order, const double *den, int64_t den_count,
                          double **num, int64_t *num_count, double wo, double passband_ripple);

/**
 * The same for Chebyshev type II, from the transmission zeros and the gain D of a digital
 * model: gain times the monic polynomial with the zeros, so that no coefficients cancel in its
 * scale. As exact as the zeros (`filtermath_ss_tzero`) and `filtermath_poly` make it, and at
 * their cost.
 * @param num_count  receives n + 1, or 0 for a model without states
 */
void filtermath_cheby2num(const _statespace *ss, double **num, int64_t *num_count);

FILTERMATH_END

#endif
