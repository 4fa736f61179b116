// Whether the sections can do with fewer digits.

#include <algorithm>
#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "analysis/cascade_peaks.h"
#include "analysis/rounding.h"
#include "checks.h"
#include "designer/limits.h"
#include "noise_levels.h"
#include "noise_text.h"
#include "text/quantities.h"
#include "tolerances.h"

namespace verdict {
namespace {

// Of the peaks of the signal between sections, for a sine of 0 dB.
struct PeakRange {
  double lowest_db = std::numeric_limits<double>::infinity();
  double highest_db = -std::numeric_limits<double>::infinity();
};

PeakRange between_sections(const analysis::Sections &sections) {
  PeakRange range;
  for (const analysis::Peak &peak : analysis::running_peaks(sections)) {
    range.lowest_db = std::min(range.lowest_db, peak.db);
    range.highest_db = std::max(range.highest_db, peak.db);
  }
  return range;
}

std::string range_text(const PeakRange &range) {
  return fmt::format("from {} to {} dB", std::lround(range.lowest_db),
                     std::lround(range.highest_db));
}

Findings gain(const Forms &forms, const PeakRange &between) {
  const bool in_first =
      std::all_of(forms.sections.begin() + 1, forms.sections.end(),
                  [](const analysis::Section &section) { return section.b0 == 1.0; });
  Findings findings;
  findings.measured["between_sections_lowest_db"] = between.lowest_db;
  findings.measured["between_sections_highest_db"] = between.highest_db;
  findings.measured["gain_in_first_section"] = in_first;
  findings.fact("gain",
                fmt::format("{:.3g}{}; peaks between sections {}", forms.roots.gain,
                            in_first ? ", all in the first section" : "", range_text(between)));
  return findings;
}

// What goes wrong in single precision, or nothing.
std::string trouble_in_floats(const FilterUnderTest &filter, const NoiseLevels &noise,
                              const analysis::RoundingEffect &effect) {
  if (effect.silent) return "the gain is too small for a float, and the filter silent";
  if (!effect.stability.stable)
    return "rounding the sections puts a pole on the unit circle or outside";
  if (!(effect.response.db <= float_tolerance_db))
    return fmt::format("rounding the sections changes the level by {:.3g} dB at {}",
                       effect.response.db, filter.published.hz_text(effect.response.w));
  if (!(noise.published_db <= designer::most_float_noise_db))
    return "the sections as published " + noise_text(noise.published_db);
  return "";
}

const char *way_out_of_floats(const NoiseLevels &noise) {
  return noise.exported_db <= designer::most_float_noise_db
             ? "run them as 'veltane export' arranges them, or keep coefficients and signals in "
               "double precision"
             : "keep coefficients and signals in double precision";
}

Findings single_precision(const FilterUnderTest &filter) {
  const analysis::RoundingEffect effect =
      analysis::float_rounding_effect(filter.forms.sections, audible_db);
  const NoiseLevels noise = noise_levels(filter.forms.sections, analysis::Arithmetic::floats);
  const std::string trouble = trouble_in_floats(filter, noise, effect);
  Findings findings;
  findings.measured["float_safe"] = trouble.empty();
  findings.measured["float_db"] = effect.response.db;
  findings.measured["float_stable"] = effect.stability.stable;
  findings.measured["float_pole_movement"] = effect.pole_movement;
  findings.measured["float_noise_db"] = noise.published_db;
  findings.measured["float_noise_exported_db"] = noise.exported_db;
  if (trouble.empty())
    findings.fact("float", fmt::format("safe: they {}; the level is right within {} dB",
                                       noise_text(noise.published_db),
                                       text::no_less_than(1.01 * effect.response.db)));
  else
    findings.note("float", "not safe: " + trouble, way_out_of_floats(noise));
  return findings;
}

}  // namespace

Findings check_precision(const FilterUnderTest &filter) {
  const PeakRange between = between_sections(filter.forms.sections);
  Findings findings = gain(filter.forms, between);
  findings += single_precision(filter);
  return findings;
}

}  // namespace verdict
