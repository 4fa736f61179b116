/** What a filter does to a sine: complex response and level. */
#ifndef ANALYSIS_RESPONSE_H
#define ANALYSIS_RESPONSE_H

#include "analysis/filter.h"

namespace analysis {

/**
 * H(exp(j pi w)), multiplied factor by factor: (z - zero) and (z - pole), or the sections'
 * numerators and denominators. Nothing overflows or vanishes on the way, since the binary
 * exponent is carried beside the product; only a result outside the doubles' range becomes
 * infinite or zero. Differences from roots near the circle are taken without cancellation
 * beyond that of the given doubles. Time grows with the order.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 5.3.
 */
Complex response(const Roots &filter, double w);
Complex response(const Sections &filter, double w);

/**
 * The same of a transfer function, by Horner's rule. Where it cancels, the digits are lost:
 * the error is up to 2 n 2^-64 times the sum of the coefficients' magnitudes for n
 * coefficients (2^-53 where long double is no wider than double).
 */
Complex response(const Transfer &filter, double w);

/** 20 log10 |H| at w, of magnitudes of any size: a level of -7000 dB is found as such. */
double level_db(const Roots &filter, double w);
double level_db(const Sections &filter, double w);
double level_db(const Transfer &filter, double w);

/** The slope of the level at w, in dB per unit of w, as a sum over the factors. Not a number
 *  at a zero or a pole on the unit circle. */
double level_slope(const Roots &filter, double w);
double level_slope(const Sections &filter, double w);

}  // namespace analysis

#endif
