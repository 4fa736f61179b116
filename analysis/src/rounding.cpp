#include "analysis/rounding.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace analysis {
namespace {

struct Movement {
  double distance;
  double ratio;
};

Movement further(const Movement &x, const Movement &y) {
  return {std::max(x.distance, y.distance), std::max(x.ratio, y.ratio)};
}

Movement moved(const Complex &from, const Complex &to) {
  const double distance = std::abs(to - from);
  const double inside = distance_inside(from);
  if (distance == 0) return {0.0, 0.0};
  return {distance, inside > 0 ? distance / inside : std::numeric_limits<double>::infinity()};
}

// Of the two ways to match old and new poles, the one with the shorter distances.
Movement moved(const Section &before, const Section &after) {
  const std::vector<Complex> from = quadratic_roots(before.a1, before.a2);
  const std::vector<Complex> to = quadratic_roots(after.a1, after.a2);
  const Movement straight = further(moved(from[0], to[0]), moved(from[1], to[1]));
  const Movement crossed = further(moved(from[0], to[1]), moved(from[1], to[0]));
  return crossed.distance < straight.distance ? crossed : straight;
}

// A call for each number: what GCC 12 makes of six conversions side by side leaves two undone.
[[gnu::noinline]] double as_float(double value) {
  return static_cast<double>(static_cast<float>(value));
}

}  // namespace

Sections rounded_to_float(const Sections &filter) {
  Sections rounded;
  for (const auto &[b0, b1, b2, a1, a2] : filter)
    rounded.push_back({as_float(b0), as_float(b1), as_float(b2), as_float(a1), as_float(a2)});
  return rounded;
}

StateVariable rounded_to_float(const StateVariable &section) {
  StateVariable rounded = section;
  for (double *value :
       {&rounded.g, &rounded.r, &rounded.h, &rounded.high, &rounded.band, &rounded.low})
    *value = as_float(*value);
  return rounded;
}

RoundingEffect rounding_effect(const Sections &before, const Sections &after, double floor_db) {
  if (before.size() != after.size())
    throw std::invalid_argument("filters with different numbers of sections cannot be compared");
  Movement furthest{0.0, 0.0};
  bool silent = false;
  for (std::size_t i = 0; i < before.size(); ++i) {
    furthest = further(furthest, moved(before[i], after[i]));
    silent = silent || (after[i].b0 == 0 && after[i].b1 == 0 && after[i].b2 == 0);
  }
  return {furthest.distance, furthest.ratio, stability(after),
          level_difference(before, after, floor_db), silent};
}

RoundingEffect float_rounding_effect(const Sections &filter, double floor_db) {
  return rounding_effect(filter, rounded_to_float(filter), floor_db);
}

RoundingEffect float_rounding_effect(const Realization &filter, double floor_db) {
  if (filter.structure != Structure::state_variable)
    return float_rounding_effect(filter.sections, floor_db);
  Sections before, after;
  for (const StateVariable &form : filter.forms) {
    before.push_back(section_of(form));
    after.push_back(section_of(rounded_to_float(form)));
  }
  return rounding_effect(before, after, floor_db);
}

}  // namespace analysis
