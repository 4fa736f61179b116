// What the JavaScript of both Web Audio targets has in common.
#ifndef LAYOUTS_JAVASCRIPT_H
#define LAYOUTS_JAVASCRIPT_H

#include <string>
#include <vector>

#include "layouts/exported_filter.h"

namespace layouts {

/** @return doubles with commas between them. */
std::string number_list(const std::vector<double> &values);

/** @return the line of the comment that makes an AudioContext of the filter's sample rate. */
std::string audio_context_line(const ExportedFilter &filter);

}  // namespace layouts

#endif
