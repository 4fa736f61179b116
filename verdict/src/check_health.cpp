// Whether a filter works at all, and how long it rings.

#include <cmath>
#include <limits>

#include <fmt/format.h>

#include "checks.h"
#include "cutoff_remedies.h"
#include "health.h"
#include "remedies.h"
#include "text/quantities.h"

namespace verdict {
namespace {

// A pole is no nearer to the circle than doubles tell.
constexpr double last_digit = 4e-16;

Change fix_the_cutoffs(const FilterUnderTest &filter) {
  return {"fix the cutoffs first", cutoffs_in_order(filter)};
}

// Other programs hold a1 and a2 with the other sign, which makes most filters unstable.
bool is_stable_with_other_feedback(analysis::Sections sections) {
  for (analysis::Section &section : sections) {
    section.a1 = -section.a1;
    section.a2 = -section.a2;
  }
  return analysis::stability(sections).stable;
}

Change remedy(const FilterUnderTest &filter) {
  if (filter.origin == Origin::foreign)
    return is_stable_with_other_feedback(filter.forms.sections)
               ? "the signs of a1 and a2: with the other ones it is stable, and some programs hold "
                 "them so"
               : "coefficients with more digits, or a filter designed anew";
  if (filter.published.has_no_band()) return fix_the_cutoffs(filter);
  if (filter.origin == Origin::saved) return design_it_again;
  return Change::to_lower_order(
      "a lower --order, or cutoffs further from 0, from the Nyquist frequency and apart");
}

Change remedy_for_lost_gain(const FilterUnderTest &filter) {
  if (filter.origin == Origin::foreign) return "the numerators of the sections";
  if (filter.published.has_no_band()) return fix_the_cutoffs(filter);
  return Change::to_lower_order(
      "a lower --order, a higher cutoff or a wider band, or several filters of a lower order in a "
      "row");
}

Findings ringing(const FilterUnderTest &filter, const analysis::Stability &stability) {
  const double samples = analysis::ringing_samples(stability);
  const double milliseconds =
      analysis::ringing_milliseconds(stability, filter.published.samplerate);
  Findings findings;
  findings.measured["ringing_samples"] = samples;
  findings.measured["ringing_ms"] = milliseconds;
  findings.fact(
      "ringing",
      fmt::format("{}, {}, until the slowest pole is 60 dB down",
                  std::isfinite(samples) && samples < 1e15
                      ? text::counted(static_cast<std::size_t>(std::ceil(samples)), "sample")
                      : fmt::format("{:.3g} samples", samples),
                  text::duration(milliseconds / 1e3)));
  return findings;
}

Findings stability(const FilterUnderTest &filter) {
  const analysis::Stability worst = worst_stability(filter.forms);
  Findings findings;
  findings.measured["stable"] = worst.stable;
  findings.measured["margin"] = worst.margin;
  if (!worst.stable) {
    findings.problem("stability",
                     std::fabs(worst.margin) <= last_digit
                         ? "not stable: a pole is on the unit circle, so the output never dies away"
                         : fmt::format("unstable: a pole is {:.3g} outside the unit circle, so the "
                                       "output grows without bound",
                                       -worst.margin),
                     remedy(filter));
    return findings;
  }
  findings.fact("stability", worst.radius == 0.0
                                 ? "stable: there is no pole but at 0"
                                 : fmt::format("stable: the outermost pole is {:.3g} inside the "
                                               "unit circle",
                                               worst.margin));
  findings += ringing(filter, worst);
  return findings;
}

Findings gain(const FilterUnderTest &filter) {
  Findings findings;
  findings.measured["gain"] = filter.forms.roots.gain;
  const double smallest = smallest_gain(filter.forms);
  if (smallest >= std::numeric_limits<double>::min()) return findings;
  findings.problem(
      "gain",
      smallest == 0 && filter.origin == Origin::foreign ? "it is 0: the filter is silent"
      : smallest == 0 ? "it is 0, because it is too small for a double: the filter is silent"
                      : fmt::format("{:.3g} is so small that it has lost digits", smallest),
      remedy_for_lost_gain(filter));
  return findings;
}

}  // namespace

Findings check_health(const FilterUnderTest &filter) {
  Findings findings;
  const bool finite = is_finite(filter.forms);
  findings.measured["finite"] = finite;
  if (!finite) {
    findings.problem("numbers", "not all of them are finite", remedy(filter));
    return findings;
  }
  findings += stability(filter);
  findings += gain(filter);
  return findings;
}

}  // namespace verdict
