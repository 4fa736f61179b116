// What must be said of a filter beside its picture.
#ifndef PICTURES_WARNINGS_H
#define PICTURES_WARNINGS_H

#include <string>
#include <vector>

#include "pictures/drawn_filter.h"

namespace pictures {

/** @param subject  what the sentences call it, such as "the filter"
 *  @return a sentence each if it is silent and if it is unstable, without a full stop */
std::vector<std::string> warnings(const DrawnFilter &filter, const std::string &subject);

}  // namespace pictures

#endif
