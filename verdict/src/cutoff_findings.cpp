#include "cutoff_findings.h"

#include <fmt/format.h>

#include "cutoff_remedies.h"
#include "designer/cutoffs.h"
#include "designer/limits.h"
#include "health.h"

namespace verdict {
namespace {

using designer::cutoff_range;
using designer::PublishedFilter;
using designer::Units;

// What is at the cutoffs.
std::string meaning(const FilterUnderTest &filter) {
  switch (filter.published.family) {
    case designer::Family::butterworth: break;
    case designer::Family::chebyshev_1:
      return fmt::format("the passband's ripple of {} dB ends there",
                         filter.used.text("passband_ripple"));
    case designer::Family::chebyshev_2:
      return fmt::format("the stopband begins there, {} dB down",
                         filter.used.text("stopband_attenuation"));
  }
  return "the level there is -3.01 dB, half the power";
}

Findings used_cutoffs(const FilterUnderTest &filter) {
  const PublishedFilter &published = filter.published;
  const std::vector<double> &used = published.cutoffs;
  Findings findings;
  text::Json list = text::Json::array();
  std::string text;
  for (const double w : used) {
    list.push_back(w * published.nyquist());
    text += (text.empty() ? "" : " and ") + published.hz_text(w);
  }
  findings.measured["cutoffs_hz"] = list;
  if (published.units == Units::normalized)
    text +=
        fmt::format(" ({}{}{} of the Nyquist frequency)", used[0], used.size() == 2 ? " and " : "",
                    used.size() == 2 ? fmt::format("{}", used[1]) : "");
  if (has_levels(filter)) text += ": " + meaning(filter);
  findings.fact("cutoff", text);
  return findings;
}

Findings cutoff_in_range(const FilterUnderTest &filter, const designer::Cutoff &cutoff) {
  const bool hertz = cutoff.units == Units::hertz;
  Findings findings;
  if (!cutoff.is_clipped()) return findings;
  const bool low = cutoff.used < 0.5;
  const std::string limit = cutoff.used_text() + (hertz ? cutoff.unit() : "");
  std::string change = fmt::format("choose a cutoff of {} or {}", limit, low ? "more" : "less");
  if (low && hertz && cutoff.asked > 0)
    change += ", or --units normalized if a fraction of the Nyquist frequency is meant";
  if (!low) change += hertz ? ", or a higher --samplerate" : ", or --units hertz if Hz are meant";
  findings.problem(
      "cutoff",
      fmt::format("{}{} is too {}, so {} is used: cutoffs lie between {} and {} of the "
                  "Nyquist frequency, {}",
                  cutoff.asked, hertz ? " Hz" : "", low ? "low" : "high", limit,
                  cutoff_range.lowest, cutoff_range.highest, filter.published.hz_text(1)),
      {change, cutoffs_in_range(filter)});
  return findings;
}

Findings band(const FilterUnderTest &filter) {
  const PublishedFilter &published = filter.published;
  Findings findings;
  if (!published.has_no_band()) return findings;
  const double first = published.frequency[0];
  const double second = published.frequency[1];
  if (first > second)
    findings.problem("cutoff", "the two cutoffs are in reverse order",
                     {fmt::format("give the lower one first: --frequency {} {}", second, first),
                      cutoffs_in_order(filter)});
  else
    findings.problem(
        "cutoff",
        fmt::format("the two cutoffs are {}, so there is no band between them",
                    first == second ? "equal" : "both " + published.hz_text(published.cutoffs[0])),
        "give two cutoffs: --frequency LOWER UPPER");
  return findings;
}

}  // namespace

Findings cutoff_findings(const FilterUnderTest &filter) {
  const PublishedFilter &published = filter.published;
  Findings findings = used_cutoffs(filter);
  for (const designer::Cutoff &cutoff : designer::cutoffs_in(filter.used, published.samplerate))
    findings += cutoff_in_range(filter, cutoff);
  findings += band(filter);
  return findings;
}

}  // namespace verdict
