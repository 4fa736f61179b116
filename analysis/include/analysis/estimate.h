/** The least order that meets given edges. */
#ifndef ANALYSIS_ESTIMATE_H
#define ANALYSIS_ESTIMATE_H

#include <cstddef>

#include "analysis/filter.h"

namespace analysis {

/** What a filter has to do. Frequencies are fractions of the Nyquist frequency. */
struct Demand {
  std::vector<double> passband; /**< edges: one, or two ascending */
  std::vector<double> stopband; /**< edges: as many */
  double ripple;                /**< most that the passband may lose, in dB, positive */
  double attenuation;           /**< least that the stopband must lose, in dB, above `ripple` */
};

/**
 * Which response the edges belong to: lowpass for passband < stopband, highpass for passband >
 * stopband, bandpass for a passband within the stopband's edges, bandstop for a stopband within
 * the passband's.
 * Raises std::invalid_argument with what is wrong when edges are not strictly ascending between
 * 0 and 1, are not as many on both sides, or overlap, or when the levels are not as above.
 */
Band demanded_band(const Demand &demand);

/** A filter that meets a demand. */
struct Estimate {
  std::size_t order;           /**< of the lowpass prototype; a band response has twice the poles */
  double exact_order;          /**< what the formula gives before it is rounded up */
  std::vector<double> cutoffs; /**< those to design with: where a butterworth has lost 3.0103
                                    dB, where the ripple of a chebyshev-1 ends, where the stopband
                                    of a chebyshev-2 begins */
  double ripple;               /**< the most that is lost between the passband's edges, in dB */
  double attenuation;          /**< the least that is lost beyond the stopband's edges, in dB */
};

/** An end of the transition: the passband's, or the stopband's. */
enum class Edge { passband, stopband };

/** Where a filter with a whole order loses exactly what is demanded, while the other edge gets the
 *  margin: the passband's edge for butterworth and chebyshev-1, the stopband's for chebyshev-2. */
Edge held_edge(Family family);

/**
 * The least order of a family that meets the demand, with prewarped edges:
 *   butterworth  n >= log(d) / log(k) / 2
 *   chebyshev    n >= acosh(sqrt(d)) / acosh(k)
 * where d = (10^(attenuation/10) - 1) / (10^(ripple/10) - 1) and k is the selectivity, the
 * stopband's edge of the lowpass prototype whose passband ends at 1.
 *
 * The margin that rounding up leaves goes to the edge that is not held (`held_edge`).
 *
 * Two edges on each side fix more than a band response has: its edges have one geometric
 * centre. The centre taken is that of the inner edges (the passband's of a bandpass, the
 * stopband's of a bandstop), which gives the largest selectivity of all centres; the outer edge
 * that is met with room to spare moves inwards. With the centre at c, k is least(|s^2 - c| / s)
 * / greatest(|p^2 - c| / p) for a bandpass with analog edges p and s, and the other way round
 * for a bandstop. A centre between those of the two pairs makes both of these terms grow, one of
 * them faster, so that of the inner edges is best.
 *
 * An order that exceeds a whole number by less than 1e-10 of it counts as that number.
 *
 * Cost: constant.
 * Accuracy: what the filter reaches, by the families' square laws, agrees with `Estimate` within
 * 1e-8 dB and 1e-8 relative. For 720 random demands the order is SciPy's, except for at most two
 * bandstops, for which SciPy's numerical search ends one higher.
 * Sources: Proakis & Manolakis, Digital Signal Processing, chapter 8 (in some editions 10), on
 * the orders of Butterworth and Chebyshev filters; Oppenheim & Schafer, Discrete-Time Signal
 * Processing, appendix B; Parks & Burrus, Digital Filter Design, chapter 7.
 * Raises std::invalid_argument as `demanded_band` does, and when the order exceeds a million.
 */
Estimate least_order(Family family, const Demand &demand);

/**
 * What a filter of another order with the same demand would reach: the cutoffs are placed by the
 * same rules, so one of `ripple` and `attenuation` is the demanded one, while the other may miss
 * the demand. Cost and accuracy are those of `least_order`.
 * @param order  at least 1
 * Raises std::invalid_argument as `demanded_band` does, and when the order is 0.
 */
Estimate with_order(Family family, const Demand &demand, std::size_t order);

}  // namespace analysis

#endif
