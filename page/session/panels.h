// The panels of one filter or two, as numbers.
#ifndef PAGE_SESSION_PANELS_H
#define PAGE_SESSION_PANELS_H

#include <vector>

#include "session/answers.h"

namespace page {

/**
 * @param designs  one or two
 * @param names    those that are wanted; unknown ones are left out
 * @param request  its "view" says what they show
 * @param answer   takes the numbers of the curves
 * @return the panels by name
 * Raises Refusal where a filter cannot be drawn.
 */
text::Json panels(const std::vector<designer::Design> &designs,
                  const std::vector<std::string> &names, const Request &request, Answer &answer);

}  // namespace page

#endif
