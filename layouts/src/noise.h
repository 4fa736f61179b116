// The noise that an exported filter makes where it is used.
#ifndef LAYOUTS_NOISE_H
#define LAYOUTS_NOISE_H

#include <string>

#include "analysis/filter.h"
#include "layouts/request.h"
#include "layouts/target.h"

namespace layouts {

/**
 * What to expect of sections in direct form II transposed, for the comment of a file.
 * @return a sentence with its full stop; empty if the filter is not stable
 * Raises designer::Refusal if they make noise of more than -60 dB of the output's peak in floats,
 * and such a filter is refused.
 */
std::string expected_noise(const analysis::Sections &sections, const Target &target, Noisy noisy);

}  // namespace layouts

#endif
