/**
 * Frequency transformations of analog models, in place.
 *
 * The model is a lowpass with its edge at 1 rad/s, as `filtermath_zpk2ss` makes it. Any
 * other model of the shapes that `_statespace` names is transformed too, more slowly and with
 * the rounding of an inverse of its whole A. All frequencies are angular.
 *
 * Substituting into s I - A shows each formula; the textbook has the substitutions, for
 * digital frequencies, in [OS] table 7.1.
 */
#ifndef FILTERMATH_TRANSFORMATIONS_H
#define FILTERMATH_TRANSFORMATIONS_H

#include "brontal/symbol.h"
#include "filtermath/linkage.h"
#include "filtermath/statespace.h"

FILTERMATH_BEGIN

/**
 * s -> s / wo: moves the edge to wo. Multiplies A and B by wo: time grows with the square
 * of the number of states, and each element is rounded once.
 */
void filtermath_lp2lp(_statespace *ss, double wo);

/**
 * s -> wo / s: a highpass with its edge at wo, with A = wo A^-1, B = -wo A^-1 B,
 * C = C A^-1 and D = D - C A^-1 B.
 *
 * A series of sections is inverted section by section: time grows with the square of the
 * number of states, and D, a product of the sections', keeps its digits even where it is
 * far smaller than its terms. Other models take time in proportion to its cube, and lose the
 * digits that the condition of A costs. A singular A is not detected: the elements that
 * depend on it are not finite, or large and meaningless.
 */
void filtermath_lp2hp(_statespace *ss, double wo);

/**
 * s -> (s^2 + wo^2) / (bw s): a bandpass; the number of states doubles, to
 * A = [bw A, wo I; -wo I, 0], B = [bw B; 0], C = [C, 0]. Time grows with the square of the
 * number of states. Three roundings per element.
 * @param wo  the geometric mean of the band's edges; not 0
 * @param bw  their difference; a negative one gives an unstable filter
 */
void filtermath_lp2bp(_statespace *ss, double wo, double bw);

/**
 * s -> bw s / (s^2 + wo^2): a bandstop; the number of states doubles. Inverted as by
 * `filtermath_lp2hp` with bw, at its cost and with its rounding, and then tied to second
 * states as by `filtermath_lp2bp`.
 *
 * The feed-through of a "chebyshev-2" is set to exactly 1.0. Otherwise it is
 * D - C A^-1 B for four states, and D minus the first element of C A^-1 for any
 * other number: the same for the all-pole prototypes, whose B is (1, 0, ..., 0).
 * @param topology  the family
 * @param wo, bw    as for `filtermath_lp2bp`
 */
void filtermath_lp2bs(_statespace *ss, t_symbol *topology, double wo, double bw);

FILTERMATH_END

#endif
