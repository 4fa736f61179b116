/** The numerators of digital filters. */
#ifndef FILTERMATH_NUMERATORS_H
#define FILTERMATH_NUMERATORS_H

#include <cstdint>

#include "brontal/symbol.h"
#include "filtermath/statespace.h"

extern "C" {

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

}  // extern "C"

#endif
