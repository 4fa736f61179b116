// Whether signals can be filtered by a cascade.
#ifndef DESIGNER_RUNNABLE_H
#define DESIGNER_RUNNABLE_H

#include <string_view>

#include "analysis/filter.h"

namespace designer {

/** Raises Refusal if a coefficient is not finite, or if the cascade is not stable.
 *  @param adviser what the caller has that says what to change: "'veltane check'" */
void require_runnable(const analysis::Sections &sections, std::string_view adviser);

}  // namespace designer

#endif
