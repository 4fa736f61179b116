// The coefficients of a section as text.
#ifndef LAYOUTS_COEFFICIENTS_H
#define LAYOUTS_COEFFICIENTS_H

#include <string>

#include "analysis/filter.h"

namespace layouts {

/** What a target does with the feedback terms that it is given. */
enum class Feedback {
  subtracted, /**< it takes a1 and a2 */
  added       /**< it takes -a1 and -a2 */
};

/** How a target writes a number. */
using NumberText = std::string (*)(double);

/** @return b0, b1, b2 and both feedback terms, with commas between them. */
std::string coefficient_list(const analysis::Section &section, Feedback feedback, NumberText text);

}  // namespace layouts

#endif
