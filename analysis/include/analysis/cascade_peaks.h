/** How loud it gets inside a cascade: peaks of its sections, and of the signal between them. */
#ifndef ANALYSIS_CASCADE_PEAKS_H
#define ANALYSIS_CASCADE_PEAKS_H

#include "analysis/extremes.h"
#include "analysis/filter.h"

namespace analysis {

/**
 * The peak of |H| over all frequencies of each section alone: its L-infinity norm, which
 * bounds the output's level for a sine of level 0. Refined as in `extremes`, so that a sharp
 * resonance is measured at its top.
 *
 * Cost: proportional to n.
 * Accuracy: 1e-9 dB, against the extrema of the quotient of two quadratics in cos(pi w).
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.8 (scaling
 * in fixed-point implementations of IIR systems).
 * @return one peak a section, in their order
 */
std::vector<Peak> section_peaks(const Sections &filter);

/**
 * The same of the first section, the first two, ..., all of them: the peaks of the signal from each
 * section to the next.
 *
 * Cost: proportional to n^2; the maxima that may be the highest are refined one by one, which an
 * equal ripple of many can make the larger part.
 * Accuracy: 1e-6 dB, against a dense search in doubles; the last one, the whole filter's, is within
 * 1e-8 dB of what the design promises, and within 1e-4 dB for orders of 200.
 * @return one peak a section, in their order
 */
std::vector<Peak> running_peaks(const Sections &filter);

}  // namespace analysis

#endif
