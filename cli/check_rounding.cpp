// Whether the sections bear a filter with fewer digits than theirs.

#include <algorithm>
#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "analysis/cascade_peaks.h"
#include "analysis/rounding.h"
#include "check_limits.h"
#include "subject.h"

namespace cli {
namespace {

struct Range {
  double lowest = std::numeric_limits<double>::infinity();
  double highest = -std::numeric_limits<double>::infinity();
};

std::string rounded(double db) { return fmt::format("{}", std::lround(db)); }

// The peaks of what is handed from section to section, for a sine of 0 dB.
Range between_sections(const Subject &subject) {
  Range range;
  for (const analysis::Peak &peak : analysis::running_peaks(subject.sections)) {
    range.lowest = std::min(range.lowest, peak.db);
    range.highest = std::max(range.highest, peak.db);
  }
  return range;
}

void tell_gain(const Subject &subject, const Range &between, Verdict &verdict) {
  const bool in_first =
      std::all_of(subject.sections.begin() + 1, subject.sections.end(),
                  [](const analysis::Section &section) { return section.b0 == 1.0; });
  verdict.measured["between_sections_lowest_db"] = between.lowest;
  verdict.measured["between_sections_highest_db"] = between.highest;
  verdict.measured["gain_in_first_section"] = in_first;
  verdict.fact("gain", fmt::format("{:.3g}{}; peaks between sections from {} to {} dB",
                                   subject.roots.gain, in_first ? ", all in the first section" : "",
                                   rounded(between.lowest), rounded(between.highest)));
}

// What goes wrong in single precision, or nothing.
std::string float_trouble(const Subject &subject, const Range &between,
                          const analysis::RoundingEffect &effect) {
  if (effect.silent) return "the gain is too small for a float, and the filter silent";
  if (!effect.stability.stable)
    return "rounding the sections puts a pole on the unit circle or outside";
  if (!(effect.response.db <= float_tolerance_db))
    return fmt::format("rounding the sections changes the level by {:.3g} dB at {}",
                       effect.response.db, subject.hz(effect.response.w));
  if (std::max(-between.lowest, between.highest) > float_range_db)
    return fmt::format("peaks between sections are from {} to {} dB", rounded(between.lowest),
                       rounded(between.highest));
  return "";
}

void check_float(const Subject &subject, const Range &between, Verdict &verdict) {
  const analysis::RoundingEffect effect =
      analysis::float_rounding_effect(subject.sections, audible_db);
  const std::string trouble = float_trouble(subject, between, effect);
  verdict.measured["float_safe"] = trouble.empty();
  verdict.measured["float_db"] = effect.response.db;
  verdict.measured["float_stable"] = effect.stability.stable;
  verdict.measured["float_pole_movement"] = effect.pole_movement;
  if (trouble.empty())
    verdict.fact("float",
                 fmt::format("safe: rounding the sections changes the level by at most {:.2g} dB",
                             effect.response.db));
  else
    verdict.note("float", "not safe: " + trouble,
                 "keep coefficients and signals in double precision");
}

}  // namespace

void check_rounding(const Subject &subject, Verdict &verdict) {
  const Range between = between_sections(subject);
  tell_gain(subject, between, verdict);
  check_float(subject, between, verdict);
}

}  // namespace cli
