// A filter for a target that computes in fixed point.
#ifndef LAYOUTS_FIXED_POINT_H
#define LAYOUTS_FIXED_POINT_H

#include "analysis/filter.h"
#include "integer_filter.h"
#include "layouts/target.h"

namespace layouts {

/**
 * Scales the sections so that none overflows (see `analysis::scaled_for_fixed`), rounds them, runs
 * them, and says what noise and what limit cycles there are.
 * @param sections    in their order, see `check_sections`
 * @param samplerate  in Hz
 * Raises designer::Refusal if the rounded filter is unstable or cannot be scaled, and if it makes
 * more noise than `designer::most_fixed_32_noise_db` or `most_fixed_16_noise_db` and such a filter
 * is refused.
 */
IntegerFilter in_fixed_point(const analysis::Sections &sections, const Target &target, Noisy noisy,
                             double samplerate);

}  // namespace layouts

#endif
