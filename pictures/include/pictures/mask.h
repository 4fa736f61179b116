// Where a level must not be: tolerance masks.
#ifndef PICTURES_MASK_H
#define PICTURES_MASK_H

#include <vector>

#include "analysis/estimate.h"
#include "pictures/curves.h"
#include "pictures/drawn_filter.h"

namespace pictures {

/** What a level has to stay out of. */
struct ForbiddenRegion {
  Curve polygon; /**< its corners in Hz and dB, one after the other, the first one not repeated */
  Curve border;  /**< the part of its outline that is a limit, not an end of an axis: a line to be
                      drawn */
};

/** Below the ripple in the passbands, above the attenuation in the stopbands, each ascending; within
 *  the axes, and empty where they show nothing of it. */
struct Mask {
  std::vector<ForbiddenRegion> passband, stopband;
};

/**
 * The mask of what a filter's settings ask for, with the passband at 0 dB: a butterworth keeps within
 * 3.01 dB and a chebyshev-1 within its ripple up to the cutoffs, a chebyshev-2 attenuates from there
 * on. Empty if no cutoffs are known, or if they have no band between them.
 * @param frequencies  in Hz
 * @param levels       in dB
 */
Mask settings_mask(const DrawnFilter &filter, const Axis &frequencies, const Axis &levels);

/**
 * The mask of a demand, with the passband at 0 dB.
 * @param samplerate  in Hz, of which the demand's frequencies are fractions of the half
 * Raises std::invalid_argument as analysis::demanded_band does.
 */
Mask demand_mask(const analysis::Demand &demand, double samplerate, const Axis &frequencies,
                 const Axis &levels);

}  // namespace pictures

#endif
