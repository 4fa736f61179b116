/** The state-space model of zeros, poles and gain. */
#ifndef FILTERMATH_ZPK2SS_H
#define FILTERMATH_ZPK2SS_H

#include "filtermath/linkage.h"
#include "filtermath/statespace.h"
#include "filtermath/zpk.h"

FILTERMATH_BEGIN

/**
 * Realises zeros, poles and gain as a cascade of one first-order section (odd
 * orders) and second-order sections, each in controllable form ([Kai] 2.1) with its two
 * states brought to the same scale, joined in series ([Kai] 2.3). Time and storage grow with
 * the square of the number of poles: a series has an element for each two states, most of
 * them 0 without zeros.
 *
 * Each element is a product over a few sections and right to a few roundings of each, so
 * that the model's poles are those given to within a few roundings of their magnitude. Two
 * poles that nearly coincide lose half of their digits in their section's coefficients.
 *
 * @param zpk    read only. With an even number of zeros, at most as many as poles: of
 *               others the last are used, by twos, as many as there are pairs of poles. A
 *               pole whose imaginary part is NaN counts as real.
 * @param model  as from `statespace_new`; reshaped and filled, for n poles to n states
 */
void filtermath_zpk2ss(const t_zpk *zpk, _statespace *model);

FILTERMATH_END

#endif
