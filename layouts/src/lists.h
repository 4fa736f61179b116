// A cascade expanded into one pair of polynomials.
#ifndef LAYOUTS_LISTS_H
#define LAYOUTS_LISTS_H

#include "analysis/filter.h"

namespace layouts {

/**
 * Multiplies the sections out, in long double, and rounds once at the end.
 * @return coefficients of z^0, z^-1, ..., both lists as long as the number of poles plus one
 */
analysis::Transfer expanded(const analysis::Sections &sections);

/**
 * Whether all poles lie inside the unit circle: all reflection coefficients of the
 * denominator are below 1 in modulus.
 * Source: the Schur-Cohn test, Proakis & Manolakis, Digital Signal Processing, section 3.6.7.
 */
bool is_stable(const analysis::Transfer &lists);

}  // namespace layouts

#endif
