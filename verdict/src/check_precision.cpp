// Whether the sections can do with fewer digits.

#include <algorithm>
#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "analysis/arrangement.h"
#include "analysis/cascade_peaks.h"
#include "analysis/noise.h"
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

bool is_quiet(double noise_db) { return noise_db <= designer::most_float_noise_db; }

// What keeps a filter from running in single precision at all, or nothing.
std::string failure_in_floats(const analysis::RoundingEffect &effect, double noise_db) {
  if (effect.silent) return "the gain is too small for a float, and the filter silent";
  if (!effect.stability.stable)
    return "rounding the sections puts a pole on the unit circle or outside";
  if (!is_quiet(noise_db)) return "they " + noise_text(noise_db);
  return "";
}

// That, or what is worth more than a word.
std::string trouble_in_floats(const FilterUnderTest &filter, const analysis::RoundingEffect &effect,
                              double noise_db) {
  std::string failure = failure_in_floats(effect, noise_db);
  if (failure.empty() && !(effect.response.db <= float_tolerance_db))
    return fmt::format("rounding the sections changes the level by {:.3g} dB at {}",
                       effect.response.db, filter.published.hz_text(effect.response.w));
  return failure;
}

const char *name_of(analysis::Structure structure) {
  return structure == analysis::Structure::state_variable ? "state-variable sections"
                                                          : "direct form II transposed";
}

Findings as_exported(const FilterUnderTest &filter, const NoiseLevels &noise) {
  const analysis::Realization &exported = noise.exported.taken;
  const analysis::RoundingEffect effect = analysis::float_rounding_effect(exported, audible_db);
  const std::string trouble = trouble_in_floats(filter, effect, exported.noise_db);
  Findings findings;
  findings.measured["float_safe"] = trouble.empty();
  findings.measured["float_structure"] = exported.structure == analysis::Structure::state_variable
                                             ? "state-variable"
                                             : "direct-2-transposed";
  findings.measured["float_db"] = effect.response.db;
  findings.measured["float_stable"] = effect.stability.stable;
  findings.measured["float_pole_movement"] = effect.pole_movement;
  findings.measured["float_noise_db"] = noise.published_db;
  findings.measured["float_noise_exported_db"] = exported.noise_db;
  const std::string where = fmt::format("safe as 'veltane export --for c-float' writes it: in {}",
                                        name_of(exported.structure));
  if (!trouble.empty()) {
    findings.note("float", fmt::format("not {}, {}", where, trouble),
                  "keep coefficients and signals in double precision");
    return findings;
  }
  findings.fact("float", where);
  findings.fact("float", fmt::format("there they {}; the level is right within {} dB",
                                     noise_text(exported.noise_db),
                                     text::no_less_than(1.01 * effect.response.db)));
  if (analysis::float_rounding_effect(filter.forms.sections, audible_db).silent)
    findings.fact(
        "float", "not safe as published: the gain is too small for a float, and the filter silent");
  else if (!is_quiet(noise.published_db))
    findings.fact("float", "not safe as published: the sections " + noise_text(noise.published_db));
  return findings;
}

// For programs that run sections in direct form I or II, as CMSIS-DSP and SuperCollider do.
Findings in_direct_forms(const FilterUnderTest &filter, const NoiseLevels &noise) {
  const analysis::Sections arranged =
      analysis::arranged(filter.forms.sections, analysis::Structure::direct_1);
  const double noise_db = std::max(
      noise.exported.direct_db,
      analysis::noise(arranged, analysis::Structure::direct_1, analysis::Arithmetic::floats)
          .worst_db());
  Findings findings;
  findings.measured["float_noise_direct_db"] = noise_db;
  const std::string failure =
      failure_in_floats(analysis::float_rounding_effect(arranged, audible_db), noise_db);
  // What no structure can do needs no second word.
  if (!failure.empty() && is_quiet(noise.exported.taken.noise_db))
    findings.note(
        "float",
        "not safe in programs that have direct forms only, such as CMSIS-DSP and SuperCollider: " +
            failure,
        "take 'veltane export --for c-float', or keep coefficients and signals in double "
        "precision");
  return findings;
}

Findings single_precision(const FilterUnderTest &filter) {
  const NoiseLevels noise = noise_levels(filter.forms, analysis::Arithmetic::floats);
  Findings findings = as_exported(filter, noise);
  findings += in_direct_forms(filter, noise);
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
