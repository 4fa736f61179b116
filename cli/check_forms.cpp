// Whether the forms of a filter are the same filter.

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "analysis/grid.h"
#include "analysis/level_difference.h"
#include "analysis/pairing.h"
#include "analysis/poles_outside.h"
#include "check_limits.h"
#include "subject.h"

namespace cli {
namespace {

// What is less is rounding, and differs from one machine to the next.
std::string within(double db) { return fmt::format("within {:.1g} dB", std::max(db, 1e-6)); }

const char *remedy(const Subject &subject) {
  return subject.saved
             ? "design it again: 'veltane design --from FILE.json'"
             : "a lower --order, or cutoffs further from 0 and from the Nyquist frequency";
}

void check_roots(const Subject &subject, Verdict &verdict) {
  const analysis::LevelDifference found =
      analysis::level_difference(subject.roots, subject.sections, audible_db);
  verdict.measured["roots_to_sections_db"] = found.db;
  if (found.db > tolerance_db)
    verdict.problem("forms",
                    fmt::format("the zeros and poles are {:.3g} dB from the sections at {}",
                                found.db, subject.hz(found.w)),
                    remedy(subject));
  else
    verdict.fact("forms", "the zeros and poles, and the sections, agree " + within(found.db));
}

void check_pairs(const Subject &subject, Verdict &verdict) {
  const analysis::Pairing found = analysis::pairing(subject.roots.poles, subject.sections);
  verdict.measured["pairs_intact"] = found.intact;
  if (found.intact) return verdict.fact("sections", "each has its pair of poles");
  std::string which;
  for (const std::size_t section : found.strangers) which += fmt::format(" {}", section + 1);
  verdict.problem("sections",
                  which.empty() ? "some of the poles are in none of them"
                                : "these have no pair of the poles:" + which,
                  remedy(subject));
}

// What is wrong with a transfer function, or nothing.
struct Judgement {
  std::string text;
  std::string change;
  analysis::LevelDifference difference{0.0, 0.0};
};

constexpr char take_sections[] = "take the sections, or several filters of a low order in a row";

Judgement judge(const Subject &subject, Verdict &verdict) {
  const analysis::Transfer &transfer = subject.transfer;
  const auto outside =
      analysis::poles_outside(transfer.denominator, analysis::grid(subject.sections, {0.0, 1.0}));
  Judgement found;
  found.difference = analysis::level_difference(subject.sections, transfer, audible_db);
  verdict.measured["transfer_function_db"] = found.difference.db;
  verdict.measured["transfer_function_poles_outside"] = outside ? Json(*outside) : Json(nullptr);
  if (!outside)
    found.text = "its coefficients have too few digits to hold these poles";
  else if (*outside > 0)
    found.text = fmt::format("it is unstable, with {} {} outside the unit circle", *outside,
                             *outside == 1 ? "pole" : "poles");
  if (found.difference.db > tolerance_db)
    found.text +=
        fmt::format("{}{} at {}", found.text.empty() ? "" : "; ",
                    std::isfinite(found.difference.db)
                        ? fmt::format("it is {:.3g} dB from the sections", found.difference.db)
                        : "it has no finite level",
                    subject.hz(found.difference.w));
  if (found.text.empty()) return found;
  found.change = take_sections;

  const double factor = subject.roots.gain / transfer.numerator.front();
  if (outside != 0U || !std::isfinite(factor) || factor == 0) return found;
  analysis::Transfer scaled = transfer;
  for (double &coefficient : scaled.numerator) coefficient *= factor;
  if (analysis::level_difference(subject.sections, scaled, audible_db).db > tolerance_db)
    return found;
  found.text = fmt::format(
      "its numerator has the wrong scale: it is {:.3g} dB from the sections "
      "everywhere",
      std::fabs(20 * std::log10(std::fabs(factor))));
  found.change = fmt::format("take the sections, or multiply the numerator by {:.17g}", factor);
  return found;
}

void check_transfer(const Subject &subject, Verdict &verdict) {
  const bool published = subject.publishes_transfer();
  // That of a new design would be compared with what stands in a file.
  if (subject.saved && !published) return;
  const Judgement found = judge(subject, verdict);
  const bool safe = found.text.empty();
  verdict.measured["transfer_function_safe"] = safe;
  const std::string about = "transfer function";
  if (safe)
    verdict.fact(about, fmt::format("{}{} of the sections, and stable",
                                    published ? "safe: " : "not published; it would be safe: ",
                                    within(found.difference.db)));
  else if (published)
    verdict.problem(about, "breaks down: " + found.text, found.change);
  else
    verdict.note(about, "not published, and it would break down: " + found.text, found.change);
}

}  // namespace

void check_forms(const Subject &subject, Verdict &verdict) {
  check_roots(subject, verdict);
  check_pairs(subject, verdict);
  check_transfer(subject, verdict);
}

}  // namespace cli
