// A filter for a target that holds floats.
#ifndef LAYOUTS_FLOATS_H
#define LAYOUTS_FLOATS_H

#include <optional>
#include <string>
#include <vector>

#include "analysis/realization.h"

namespace layouts {

struct RoundedFilter {
  analysis::Sections sections;                /**< what the rounded coefficients compute */
  std::vector<analysis::StateVariable> forms; /**< if it runs in these: each coefficient a float's
                                                   value; otherwise the sections' coefficients are */
  bool becomes_unstable = false;              /**< and was stable before */
  std::optional<std::string> remark;          /**< if the response has changed */
};

/**
 * Rounds each coefficient to the nearest float.
 * @param filter      finite
 * @param target      its name, for the sentences
 * @param samplerate  in Hz
 * Raises designer::Refusal when a section's output is outside the range of floats.
 */
RoundedFilter in_floats(const analysis::Realization &filter, const std::string &target,
                        double samplerate);

/** @return the sentence that refuses a filter which becomes unstable.
 *  @param instead  what to do */
std::string instability_refusal(const analysis::Sections &sections, const std::string &target,
                                const std::string &instead);

}  // namespace layouts

#endif
