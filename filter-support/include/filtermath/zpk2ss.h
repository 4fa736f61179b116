/** The state-space model of zeros, poles and gain. */
#ifndef FILTERMATH_ZPK2SS_H
#define FILTERMATH_ZPK2SS_H

#include "filtermath/statespace.h"
#include "filtermath/zpk.h"

extern "C" {

/**
 * Realises zeros, poles and gain as a cascade of one first-order section (odd
 * orders) and second-order sections, each in controllable form with its two
 * states brought to the same scale ([Kai] 2.1).
 * @param zpk    with an even number of zeros, at most as many as poles: of others
 *               the last are used, by twos, as many as there are pairs of poles. A
 *               pole whose imaginary part is NaN counts as real.
 * @param model  as from `statespace_new`; filled
 */
void filtermath_zpk2ss(const t_zpk *zpk, _statespace *model);

}  // extern "C"

#endif
