// Whether the forms of a filter are the same filter.

#include <algorithm>
#include <cmath>
#include <optional>

#include <fmt/format.h>

#include "analysis/grid.h"
#include "analysis/level_difference.h"
#include "analysis/pairing.h"
#include "analysis/poles_outside.h"
#include "checks.h"
#include "remedies.h"
#include "tolerances.h"

namespace verdict {
namespace {

// What is less is rounding, and differs from one machine to the next.
std::string within(double db) { return fmt::format("within {:.1g} dB", std::max(db, 1e-6)); }

Findings roots(const FilterUnderTest &filter) {
  const analysis::LevelDifference found =
      analysis::level_difference(filter.forms.roots, filter.forms.sections, audible_db);
  Findings findings;
  findings.measured["roots_to_sections_db"] = found.db;
  if (found.db > tolerance_db)
    findings.problem("forms",
                     fmt::format("the zeros and poles are {:.3g} dB from the sections at {}",
                                 found.db, filter.published.hz_text(found.w)),
                     remedy_for_lost_digits(filter));
  else
    findings.fact("forms", "the zeros and poles, and the sections, agree " + within(found.db));
  return findings;
}

Findings pairs(const FilterUnderTest &filter) {
  const analysis::Pairing found =
      analysis::pairing(filter.forms.roots.poles, filter.forms.sections);
  Findings findings;
  findings.measured["pairs_intact"] = found.intact;
  if (found.intact) {
    findings.fact("sections", "each has its pair of poles");
    return findings;
  }
  std::string which;
  for (const std::size_t section : found.strangers) which += fmt::format(" {}", section + 1);
  findings.problem("sections",
                   which.empty() ? "some of the poles are in no section"
                                 : "these do not hold a pair of the poles:" + which,
                   remedy_for_lost_digits(filter));
  return findings;
}

// What a transfer function does.
struct TransferMeasures {
  analysis::LevelDifference difference;     /**< from the sections */
  std::optional<std::size_t> poles_outside; /**< none if it is uncertain */
};

TransferMeasures measures(const Forms &forms) {
  return {analysis::level_difference(forms.sections, forms.transfer, audible_db),
          analysis::poles_outside(forms.transfer.denominator,
                                  analysis::grid(forms.sections, {0.0, 1.0}))};
}

// The factor that corrects a numerator that is otherwise right; none if that does not help.
std::optional<double> correcting_factor(const Forms &forms, const TransferMeasures &measured) {
  const double factor = forms.roots.gain / forms.transfer.numerator.front();
  if (measured.poles_outside != 0U || !std::isfinite(factor) || factor == 0) return std::nullopt;
  analysis::Transfer scaled = forms.transfer;
  for (double &coefficient : scaled.numerator) coefficient *= factor;
  if (analysis::level_difference(forms.sections, scaled, audible_db).db > tolerance_db)
    return std::nullopt;
  return factor;
}

// Empty if it is stable.
std::string instability(const TransferMeasures &measured) {
  if (!measured.poles_outside) return "its coefficients have too few digits to hold these poles";
  if (*measured.poles_outside == 0) return "";
  return fmt::format("it is unstable, with {} {} outside the unit circle", *measured.poles_outside,
                     *measured.poles_outside == 1 ? "pole" : "poles");
}

// How a transfer function breaks down.
struct Breakdown {
  std::string text;
  std::string change;
};

// Without the transfer function the sections are what is left to take.
std::vector<designer::Settings> sections_instead() {
  const designer::Value on = std::string("on");
  return {{{"tf_output", {std::string("off")}}, {"sos_output", {on}}, {"zpk_output", {on}}}};
}

// None if the transfer function can be used.
std::optional<Breakdown> breakdown(const FilterUnderTest &filter,
                                   const TransferMeasures &measured) {
  const auto [db, w] = measured.difference;
  std::string text = instability(measured);
  if (db > tolerance_db)
    text += fmt::format("{}{} at {}", text.empty() ? "" : "; ",
                        std::isfinite(db) ? fmt::format("it is {:.3g} dB from the sections", db)
                                          : "it has no finite level",
                        filter.published.hz_text(w));
  if (text.empty()) return std::nullopt;
  const auto factor = correcting_factor(filter.forms, measured);
  if (!factor)
    return Breakdown{text, "take the sections, or several filters of a low order in a row"};
  return Breakdown{fmt::format("its numerator has the wrong scale: it is {:.3g} dB from the "
                               "sections everywhere",
                               std::fabs(20 * std::log10(std::fabs(*factor)))),
                   fmt::format("take the sections, or multiply the numerator by {:.17g}", *factor)};
}

Findings transfer_function(const FilterUnderTest &filter) {
  const bool published = filter.publishes_transfer();
  // That of a new design would be compared with what a file holds.
  if (filter.origin == Origin::saved && !published) return {};
  const TransferMeasures measured = measures(filter.forms);
  const auto broken = breakdown(filter, measured);
  Findings findings;
  findings.measured["transfer_function_db"] = measured.difference.db;
  findings.measured["transfer_function_poles_outside"] =
      measured.poles_outside ? text::Json(*measured.poles_outside) : text::Json(nullptr);
  findings.measured["transfer_function_safe"] = !broken;
  const std::string about = "transfer function";
  if (!broken)
    findings.fact(about, fmt::format("{}{} of the sections, and stable",
                                     published ? "safe: " : "not published; it would be safe: ",
                                     within(measured.difference.db)));
  else if (published)
    findings.problem(about, "breaks down: " + broken->text, {broken->change, sections_instead()});
  else
    findings.note(about, "not published, and it would break down: " + broken->text, broken->change);
  return findings;
}

}  // namespace

Findings check_forms(const FilterUnderTest &filter) {
  Findings findings = roots(filter);
  findings += pairs(filter);
  findings += transfer_function(filter);
  return findings;
}

}  // namespace verdict
