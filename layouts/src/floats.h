// A filter for a target that holds floats.
#ifndef LAYOUTS_FLOATS_H
#define LAYOUTS_FLOATS_H

#include <optional>
#include <string>

#include "analysis/filter.h"

namespace layouts {

struct RoundedFilter {
  analysis::Sections sections;       /**< each coefficient a float's value */
  std::optional<std::string> remark; /**< if the response has changed */
};

/**
 * Rounds each coefficient to the nearest float.
 * @param sections    finite
 * @param target      its name, for the sentences
 * @param samplerate  in Hz
 * Raises designer::Refusal when a numerator is outside the range of floats, or when a stable filter
 * becomes unstable.
 */
RoundedFilter in_floats(const analysis::Sections &sections, const std::string &target,
                        double samplerate);

}  // namespace layouts

#endif
