// The words of the module for families, responses and units, and what they stand for.
#ifndef DESIGNER_NAMES_H
#define DESIGNER_NAMES_H

#include <array>
#include <optional>
#include <string_view>

#include "analysis/estimate.h"
#include "analysis/filter.h"

namespace designer {

using analysis::Family;
using Response = analysis::Band;

/** What cutoffs are given in: Hz, fractions of the Nyquist frequency, or radians per sample, which
 *  the module does not support. */
enum class Units { hertz, normalized, radians };

/** In the order in which the module lists them. */
inline constexpr std::array all_families{Family::butterworth, Family::chebyshev_1,
                                         Family::chebyshev_2};

/** @return the module's word: butterworth, chebyshev-1, chebyshev-2. */
std::string_view name_of(Family family);

/** @return the module's word: lowpass, highpass, bandpass, bandstop. */
std::string_view name_of(Response response);

/** @return what a word of the module stands for; none if it is not such a word. */
std::optional<Family> family_named(std::string_view word);
std::optional<Response> response_named(std::string_view word);
std::optional<Units> units_named(std::string_view word);

}  // namespace designer

#endif
