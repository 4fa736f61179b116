/** The bilinear transform. */
#ifndef FILTERMATH_BILINEAR_H
#define FILTERMATH_BILINEAR_H

#include "filtermath/linkage.h"
#include "filtermath/statespace.h"

FILTERMATH_BEGIN

/**
 * Makes an analog model digital, in place, by the bilinear transform
 * s = 2 fs (z - 1) / (z + 1) ([OS] 7.2.2), without prewarping. With T = 1 / fs and
 * M = I - (T / 2) A the new model is M^-1 (I + (T / 2) A), (T / sqrt T) M^-1 B,
 * sqrt(T) C M^-1 and D + (T / 2) C M^-1 B: B and C share the factor T.
 *
 * A series of sections, as the transformations of what `filtermath_zpk2ss` makes are, is
 * transformed section by section: time grows with the square of the number of states, and
 * a section's rounding stays its own. Other models take time in proportion to its cube, for one inverse. The new D, a sum,
 * keeps its digits in a series even where it is far smaller than its terms; in other models
 * it does as far as the inverse system is well conditioned.
 *
 * @param fs  sampling rate; a pole at 2 fs makes M singular and gives numbers that are not
 *            finite
 */
void filtermath_bilinear(_statespace *ss, double fs);

FILTERMATH_END

#endif
