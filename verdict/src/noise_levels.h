// How much noise the sections make when a signal runs through them.
#ifndef VERDICT_NOISE_LEVELS_H
#define VERDICT_NOISE_LEVELS_H

#include "analysis/filter.h"
#include "analysis/structure.h"

namespace verdict {

/** Errors at the output in dB of its peak, negative where they are less: the worse of those for
 *  white noise and for the worst sine. Infinite where the signal overflows or the filter cannot be
 *  run. */
struct NoiseLevels {
  double published_db; /**< the sections as they are */
  double exported_db;  /**< arranged, as `veltane export` writes them */
};

/** In direct form II transposed.
 *  @param sections  stable and finite
 *  @param arithmetic  doubles or floats */
NoiseLevels noise_levels(const analysis::Sections &sections, analysis::Arithmetic arithmetic);

}  // namespace verdict

#endif
