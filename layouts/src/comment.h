// The comment that an exported file begins with.
#ifndef LAYOUTS_COMMENT_H
#define LAYOUTS_COMMENT_H

#include <string>
#include <string_view>
#include <vector>

#include "coefficients.h"
#include "layouts/exported_filter.h"

namespace layouts {

/** @return the lines of the comment that say what sections compute: the equation in z and in time,
 *  and the sign of the feedback terms. */
std::vector<std::string> equation(Feedback feedback);

/**
 * Says what the file holds: settings, equation, sample rate, scaling, the command that makes it
 * again. Texts of others are made fit to be shown, so that none can end the comment.
 * @param prefix  what begins a line of comment, such as "# "
 * @param usage   the equation, how this file holds the coefficients, and how to use it; a line each
 */
std::string comment(const ExportedFilter &filter, std::string_view prefix,
                    const std::vector<std::string> &usage);

}  // namespace layouts

#endif
