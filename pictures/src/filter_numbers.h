// Filters called by their numbers in the key.
#ifndef PICTURES_FILTER_NUMBERS_H
#define PICTURES_FILTER_NUMBERS_H

#include <string>
#include <vector>

#include <fmt/format.h>

#include "pictures/drawn_filter.h"

namespace pictures {

/** @param is_so  takes a filter, and returns whether something is true of it
 *  @return the numbers of the filters of which it is, from 1: "2, 4"; empty if there are none */
template <class Predicate>
std::string numbers_of(const std::vector<DrawnFilter> &filters, const Predicate &is_so) {
  std::string text;
  for (std::size_t i = 0; i < filters.size(); ++i)
    if (is_so(filters[i])) text += fmt::format("{}{}", text.empty() ? "" : ", ", i + 1);
  return text;
}

}  // namespace pictures

#endif
