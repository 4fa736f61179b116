/** The order of sections, their zeros and their gains, so that a cascade runs quietly. */
#ifndef ANALYSIS_ARRANGEMENT_H
#define ANALYSIS_ARRANGEMENT_H

#include "analysis/filter.h"
#include "analysis/structure.h"

namespace analysis {

/**
 * The same filter with its sections arranged for the least rounding noise: another order, a gain
 * for each section, and for state-variable sections the zeros paired anew with the poles where that
 * is quieter.
 *
 * The order is the one found with the least sum, over all places between sections, of (peak of
 * |product before| times L2 norm of the product behind)^2: what is rounded there is as small as the
 * first factor lets it be, once levels are set, and white noise leaves multiplied by the second.
 * The search starts with the sections sorted by the angles of their poles and taken in the order of
 * van der Corput (first, middle, the two quarters, ...), which spreads the poles of every product
 * evenly. Then each window of eight consecutive sections (of six in more than 48) is brought into
 * its best order by dynamic programming, until no window changes or four rounds are over. Up to
 * eight sections the order is therefore the best of all. docs/running.md compares it with others.
 *
 * In direct forms zeros keep their poles: rounding enters there with the gain of the poles alone,
 * and needs zeros at the edge of its noise in the sections behind. In a state-variable section each
 * pole takes the nearest zeros instead, the pole nearest to the circle first, if that makes the sum
 * above at least a fifth less. Pairs of complex zeros stay together. Sections with a zero or a pole
 * at 0, as those of first order have, or with a zero at infinity, keep their numerators.
 *
 * Each numerator is multiplied by a power of two, so that the peak from the input to each section
 * but the last is between -3.1 and +4 dB, and the last one makes up for it; if that leaves the range
 * of normal doubles, all gains stay as given. So all coefficients keep their digits, unless real
 * zeros have new partners: then those are roots of the given numerators, multiplied out again. a1
 * and a2 are never changed.
 *
 * A filter that cannot run is given back unchanged: one with a coefficient that is not finite, a
 * pole on the unit circle or outside, or a numerator of zeros. No sections give none.
 *
 * Cost: proportional to n^2; docs/running.md has the times.
 * Accuracy: without new pairs the product is the same to the bit; with them it is within n times
 * 1e-15 of the peak. Peaks and norms are those at a few hundred frequencies.
 * Source: Jackson, "Roundoff-noise analysis for fixed-point digital filters realized in cascade or
 * parallel form" (1970), for the products before and behind and their norms; Oppenheim & Schafer,
 * Discrete-Time Signal Processing, 2nd ed., section 6.8 (pairing and ordering in a cascade).
 * @return as many sections as given
 */
Sections arranged(const Sections &filter, Structure structure);

/**
 * The same for a direct form without a search: the sections in the order in which that begins, which
 * mixes slow poles of neighbouring angles with those far away, and their gain distributed. It is far
 * quieter than an order by angle, and less quiet than that of `arranged`.
 *
 * Cost: proportional to n^2, a tenth of that of `arranged`.
 * @return the filter as it is where `arranged` returns it as it is
 */
Sections quickly_arranged(const Sections &filter);

}  // namespace analysis

#endif
