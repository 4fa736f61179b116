// The levels of a filter that was not asked for any.

#include <fmt/format.h>

#include "analysis/crossing.h"
#include "analysis/extremes.h"
#include "analysis/response.h"
#include "checks.h"
#include "text/quantities.h"

namespace verdict {
namespace {

// What is lower depends on the last digits, or is a zero on the unit circle.
constexpr double lowest_db = -200.0;

std::string level_text(double db) {
  return db < lowest_db ? "below " + text::decibels(lowest_db) : text::decibels(db);
}

// More than these are ripple.
constexpr std::size_t most_named = 4;

Findings half_power(const FilterUnderTest &filter, double highest_db) {
  const auto found =
      analysis::crossings(filter.forms.sections, highest_db - analysis::half_power_db, {0.0, 1.0});
  Findings findings;
  text::Json list = text::Json::array();
  std::string text;
  for (const double w : found) {
    list.push_back(w * filter.published.nyquist());
    text += (text.empty() ? "" : " and ") + filter.published.hz_text(w);
  }
  findings.measured["half_power_hz"] = list;
  if (found.size() > most_named)
    text = fmt::format("{} times, the first at {} and the last at {}", found.size(),
                       filter.published.hz_text(found.front()),
                       filter.published.hz_text(found.back()));
  if (!found.empty()) findings.fact("-3 dB", (found.size() > most_named ? "" : "at ") + text);
  return findings;
}

}  // namespace

Findings check_response(const FilterUnderTest &filter) {
  const analysis::Sections &sections = filter.forms.sections;
  const analysis::Peak highest = analysis::extremes(sections, {{0.0, 1.0}}).highest;
  const double at_dc = analysis::level_db(sections, 0.0);
  const double at_nyquist = analysis::level_db(sections, 1.0);
  Findings findings;
  findings.measured["highest_db"] = highest.db;
  findings.measured["highest_hz"] = highest.w * filter.published.nyquist();
  findings.measured["dc_db"] = at_dc;
  findings.measured["nyquist_db"] = at_nyquist;
  findings.fact("levels",
                fmt::format("{} at 0 Hz, {} at {}, and at most {} at {}", level_text(at_dc),
                            level_text(at_nyquist), filter.published.hz_text(1.0),
                            level_text(highest.db), filter.published.hz_text(highest.w)));
  findings += half_power(filter, highest.db);
  return findings;
}

}  // namespace verdict
