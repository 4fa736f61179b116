// The filters that meet a demand, as a page to read and as JSON.
#ifndef CLI_ESTIMATE_PAGE_H
#define CLI_ESTIMATE_PAGE_H

#include <string>
#include <vector>

#include "base/words.h"
#include "estimate/demand_options.h"

namespace cli {

/** @return the demand in one line, a table of the filters, and the commands that make them. */
std::string estimate_page(const TypedDemand &demand,
                          const std::vector<designer::Candidate> &candidates);

/**
 * {"veltane": version, "command": [...], "response", "units", "samplerate", "passband", "stopband",
 * "ripple", "attenuation", "families": [{"family", "possible", "reason", "order", "exact_order",
 * "poles", "cutoffs", "ripple", "attenuation", "design"}, ...]}: "design" is the command that makes
 * the filter; keys without a result are missing.
 */
std::string estimate_document(const TypedDemand &demand,
                              const std::vector<designer::Candidate> &candidates,
                              const Words &command);

}  // namespace cli

#endif
