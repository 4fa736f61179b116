// The filter that runs over a signal.
#ifndef CLI_APPLY_FILTER_H
#define CLI_APPLY_FILTER_H

#include "analysis/filter.h"
#include "apply/input.h"
#include "args/subcommand.h"

namespace cli {

struct RunningFilter {
  analysis::Sections sections; /**< arranged for the least noise */
  double samplerate;           /**< in Hz */
};

/**
 * Designs the filter that was asked for, at the signal's sample rate, and says on standard error
 * what became of the settings.
 * Raises designer::Refusal when the settings name another sample rate than the signal has, or none
 * where it has none, and when the filter is not stable or published no sections.
 */
RunningFilter running_filter(const Request &request, const Input &input);

}  // namespace cli

#endif
