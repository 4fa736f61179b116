// How large a filter is, and at which sample rate.

#include <fmt/format.h>

#include "checks.h"
#include "text/quantities.h"

namespace verdict {
namespace {

std::string order_text(const FilterUnderTest &filter, const std::string &poles,
                       const std::string &sections) {
  const designer::PublishedFilter &published = filter.published;
  if (filter.origin == Origin::foreign) return fmt::format("{}, in {}", poles, sections);
  if (!published.has_two_cutoffs())
    return fmt::format("{}: {}, in {}", published.order, poles, sections);
  return fmt::format(
      "{} is that of the lowpass it is made from; the {} has twice as many poles: {}, in {}",
      published.order, designer::name_of(published.response), filter.forms.roots.poles.size(),
      sections);
}

}  // namespace

Findings check_size(const FilterUnderTest &filter) {
  const std::size_t poles = filter.forms.roots.poles.size();
  const std::size_t sections = filter.forms.sections.size();
  const double rate = filter.published.samplerate;
  Findings findings;
  findings.measured["poles"] = poles;
  findings.measured["sections"] = sections;
  findings.measured["samplerate"] = rate;
  findings.fact("order", order_text(filter, text::counted(poles, "pole"),
                                    text::counted(sections, "section")));
  findings.fact("sample rate", fmt::format("{} Hz{}", rate,
                                           filter.published.samplerate_assumed
                                               ? ", assumed: --samplerate sets another"
                                               : ""));
  return findings;
}

}  // namespace verdict
