/** The bilinear transform. */
#ifndef FILTERMATH_BILINEAR_H
#define FILTERMATH_BILINEAR_H

#include "filtermath/statespace.h"

extern "C" {

/**
 * Makes an analog model digital, in place, by the bilinear transform
 * s = 2 fs (z - 1) / (z + 1) ([OS] 7.2.2), sharing the factor 1 / fs between B
 * and C. There is no prewarping. The new D, a sum, keeps its digits in a series of
 * sections even where it is far smaller than its terms.
 * @param fs  sampling rate; a pole at 2 fs gives numbers that are not finite
 */
void filtermath_bilinear(_statespace *ss, double fs);

}  // extern "C"

#endif
