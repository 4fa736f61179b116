// How large a filter is of which nothing is known but its sections.

#include <fmt/format.h>

#include "checks.h"
#include "text/quantities.h"

namespace verdict {

Findings check_size(const FilterUnderTest &filter) {
  const std::size_t poles = filter.forms.roots.poles.size();
  const std::size_t sections = filter.forms.sections.size();
  const double rate = filter.published.samplerate;
  Findings findings;
  findings.measured["poles"] = poles;
  findings.measured["sections"] = sections;
  findings.measured["samplerate"] = rate;
  findings.fact("order", fmt::format("{}, in {}", text::counted(poles, "pole"),
                                     text::counted(sections, "section")));
  findings.fact("sample rate", fmt::format("{} Hz{}", rate,
                                           filter.published.samplerate_assumed
                                               ? ", assumed: --samplerate sets another"
                                               : ""));
  return findings;
}

}  // namespace verdict
