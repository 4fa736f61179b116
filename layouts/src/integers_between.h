// A filter for a target that computes each section in doubles and passes integers on to the next.
#ifndef LAYOUTS_INTEGERS_BETWEEN_H
#define LAYOUTS_INTEGERS_BETWEEN_H

#include "analysis/filter.h"
#include "integer_filter.h"
#include "layouts/target.h"

namespace layouts {

/**
 * Distributes the gain so that nothing clips between the sections (see
 * `analysis::with_gain_within_full_scale`), and says what noise the integers of 32 bits make.
 * @param sections  in their order, see `check_sections`
 * Raises designer::Refusal if they make noise of more than `designer::most_float_noise_db` and such
 * a filter is refused.
 */
IntegerFilter with_integers_between(const analysis::Sections &sections, const Target &target,
                                    const Request &request);

}  // namespace layouts

#endif
