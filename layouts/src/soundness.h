// Whether there is a filter to write, and whether it works where it is used.
#ifndef LAYOUTS_SOUNDNESS_H
#define LAYOUTS_SOUNDNESS_H

#include <string>
#include <vector>

#include "analysis/filter.h"
#include "layouts/request.h"
#include "layouts/target.h"

namespace layouts {

/** Raises designer::Refusal if there are no sections, a coefficient is not finite, or all of a
 *  numerator is zero or too small for a normal double. */
void check_sections(const analysis::Sections &sections);

/** @return a sentence if the filter is not stable, and one if the output of a section is so small
 *          or so large that the target's numbers have few digits left for it. */
std::vector<std::string> remarks_on(const analysis::Sections &sections, Arithmetic arithmetic,
                                    Arrangement arrangement);

}  // namespace layouts

#endif
