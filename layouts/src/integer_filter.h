// Filters for targets that hold signals as integers, which have an end.
#ifndef LAYOUTS_INTEGER_FILTER_H
#define LAYOUTS_INTEGER_FILTER_H

#include <string>
#include <vector>

#include "analysis/filter.h"
#include "layouts/request.h"
#include "layouts/target.h"

namespace layouts {

/** A filter as it goes into the file, and what there is to say about it. */
struct IntegerFilter {
  analysis::Sections sections;        /**< as in ExportedFilter */
  int shift;                          /**< as in ExportedFilter */
  std::vector<std::string> sentences; /**< how it is arranged and scaled, and what noise it makes,
                                           each with its full stop */
  std::vector<std::string> remarks;   /**< as in ExportedFilter */
};

bool has_integer_signals(const Target &target);

/**
 * Arranges the sections as asked, and gives each a gain with which its signal stays within the
 * integers. The level is that of the given sections but for 2^-shift.
 * @param sections    see `check_sections`
 * @param samplerate  in Hz
 * Raises designer::Refusal if the target cannot hold the filter, or if it makes more noise than is
 * any use and such a filter is refused.
 */
IntegerFilter integer_filter(const analysis::Sections &sections, const Target &target,
                             const Request &request, double samplerate);

}  // namespace layouts

#endif
