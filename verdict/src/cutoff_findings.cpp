#include "cutoff_findings.h"

#include <numbers>

#include <fmt/format.h>

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

// @param asked  in the filter's units
// @param used   as a fraction of the Nyquist frequency
Findings cutoff_in_range(const PublishedFilter &filter, double asked, double used) {
  const bool hertz = filter.units == Units::hertz;
  const double fraction = hertz ? asked / filter.nyquist() : asked;
  Findings findings;
  if (fraction >= cutoff_range.lowest && fraction <= cutoff_range.highest) return findings;
  const bool low = !(fraction > cutoff_range.lowest);
  const std::string limit = hertz ? filter.hz_text(used) : fmt::format("{}", used);
  std::string change = fmt::format("choose a cutoff of {} or {}", limit, low ? "more" : "less");
  if (low && hertz && asked > 0)
    change += ", or --units normalized if a fraction of the Nyquist frequency is meant";
  if (!low) change += hertz ? ", or a higher --samplerate" : ", or --units hertz if Hz are meant";
  findings.problem(
      "cutoff",
      fmt::format("{}{} is too {}, so {} is used: cutoffs lie between {} and {} of the "
                  "Nyquist frequency, {}",
                  asked, hertz ? " Hz" : "", low ? "low" : "high", limit, cutoff_range.lowest,
                  cutoff_range.highest, filter.hz_text(1)),
      change);
  return findings;
}

Findings radians(const PublishedFilter &filter) {
  std::string fractions;
  bool below_nyquist = true;
  for (std::size_t i = 0; i < filter.cutoffs.size(); ++i) {
    const double fraction = filter.frequency.at(i) / std::numbers::pi;
    below_nyquist = below_nyquist && fraction < 1;
    fractions += fmt::format(" {:.10g}", fraction);
  }
  Findings findings;
  findings.problem("units",
                   "radians are not supported: the cutoffs given are ignored, and those of a new "
                   "box are used",
                   below_nyquist
                       ? fmt::format("--units normalized --frequency{}, which are these radians "
                                     "divided by pi",
                                     fractions)
                       : "--units hertz, or --units normalized for fractions of the Nyquist "
                         "frequency");
  return findings;
}

Findings band(const PublishedFilter &filter) {
  Findings findings;
  if (!filter.has_no_band()) return findings;
  const double first = filter.frequency[0];
  const double second = filter.frequency[1];
  if (first > second)
    findings.problem("cutoff", "the two cutoffs are in reverse order",
                     fmt::format("give the lower one first: --frequency {} {}", second, first));
  else
    findings.problem(
        "cutoff",
        fmt::format("the two cutoffs are {}, so there is no band between them",
                    first == second ? "equal" : "both " + filter.hz_text(filter.cutoffs[0])),
        "give two cutoffs: --frequency LOWER UPPER");
  return findings;
}

}  // namespace

Findings cutoff_findings(const FilterUnderTest &filter) {
  const PublishedFilter &published = filter.published;
  Findings findings = used_cutoffs(filter);
  if (published.units == Units::radians) {
    findings += radians(published);
  } else {
    for (std::size_t i = 0; i < published.cutoffs.size(); ++i)
      findings += cutoff_in_range(published, published.frequency.at(i), published.cutoffs[i]);
  }
  findings += band(published);
  return findings;
}

}  // namespace verdict
