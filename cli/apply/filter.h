// The filter that runs over a signal.
#ifndef CLI_APPLY_FILTER_H
#define CLI_APPLY_FILTER_H

#include <optional>
#include <string>

#include "analysis/filter.h"
#include "apply/input.h"
#include "args/subcommand.h"

namespace cli {

struct RunningFilter {
  analysis::Sections sections; /**< arranged for the least noise */
  double samplerate;           /**< in Hz */
};

/**
 * The filter that was asked for: sections of another program, a saved design with its coefficients
 * as they are, or a design from settings, for the signal's sample rate. Says on standard error what
 * became of the settings.
 * @param saved  the file with the saved design; none if it was not given
 * Raises designer::Refusal when more than one of these was given, the filter is for another sample
 * rate than the signal has, or for none where the signal has none and cutoffs are in Hz, and when it
 * is not stable or published no sections.
 */
RunningFilter running_filter(const Request &request, const Input &input,
                             const std::optional<std::string> &saved);

}  // namespace cli

#endif
