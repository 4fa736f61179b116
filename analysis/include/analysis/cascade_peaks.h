/** How loud it gets inside a cascade. */
#ifndef ANALYSIS_CASCADE_PEAKS_H
#define ANALYSIS_CASCADE_PEAKS_H

#include "analysis/extremes.h"
#include "analysis/filter.h"

namespace analysis {

/**
 * The peak of |H| over all frequencies of each section alone: its L-infinity norm, which
 * bounds the output's level for a sine of level 0. Refined as in `extremes`, so that a sharp
 * resonance is met at its top. In the order of the sections.
 * Source: Oppenheim & Schafer, Discrete-Time Signal Processing, 2nd ed., section 6.9 (scaling
 * in fixed-point realisations of IIR systems).
 */
std::vector<Peak> section_peaks(const Sections &filter);

/** The same of the first section, the first two, ..., all of them: the peaks of what is handed
 *  from section to section. */
std::vector<Peak> running_peaks(const Sections &filter);

}  // namespace analysis

#endif
