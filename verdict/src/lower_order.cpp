#include "verdict/lower_order.h"

#include <algorithm>

#include "checks.h"
#include "health.h"

namespace verdict {
namespace {

bool wants_lower_order(const Findings &findings) {
  return std::any_of(findings.list.begin(), findings.list.end(),
                     [](const Finding &finding) { return finding.change.lower_order; });
}

// Of all checks only those that may want a lower order, and none after the first that does.
bool is_low_enough(designer::Designer &designer, designer::Settings settings, std::size_t order) {
  settings.set("order", {static_cast<t_long>(order)});
  const FilterUnderTest filter = new_filter(designer, settings, {});
  if (wants_lower_order(check_health(filter))) return false;
  if (!has_levels(filter)) return true;
  return !wants_lower_order(check_levels(filter)) && !wants_lower_order(check_forms(filter)) &&
         !wants_lower_order(check_noise(filter));
}

}  // namespace

bool wants_lower_order(const Verdict &verdict) { return wants_lower_order(verdict.findings); }

std::optional<std::size_t> lower_order(designer::Designer &designer,
                                       const designer::Settings &requested) {
  auto too_high = static_cast<std::size_t>(designer.accepted(requested).settings.number("order"));
  const auto lowest = static_cast<std::size_t>(designer.range("order").lowest);
  // Below the lowest order there is nothing to find.
  std::size_t good = lowest - 1;
  while (too_high - good > 1) {
    const std::size_t middle = good + (too_high - good) / 2;
    (is_low_enough(designer, requested, middle) ? good : too_high) = middle;
  }
  if (good < lowest) return std::nullopt;
  return good;
}

}  // namespace verdict
