// How much noise the sections make when a signal runs through them.
#ifndef VERDICT_NOISE_LEVELS_H
#define VERDICT_NOISE_LEVELS_H

#include "analysis/realization.h"
#include "verdict/filter_under_test.h"

namespace verdict {

/** Errors at the output in dB of its peak, negative where they are less: the worse of those for
 *  white noise and for the worst sine. Infinite where the signal overflows or the filter cannot be
 *  run. */
struct NoiseLevels {
  double published_db; /**< the sections as they are, in direct form II transposed */
  analysis::ChosenRealization exported; /**< arranged and in the structure in which `veltane export`
                                             writes them for C and C++ */
};

/** @param forms  stable and finite
 *  @param arithmetic  doubles or floats */
NoiseLevels noise_levels(const Forms &forms, analysis::Arithmetic arithmetic);

}  // namespace verdict

#endif
