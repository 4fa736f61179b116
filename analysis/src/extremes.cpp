#include "analysis/extremes.h"

#include <stdexcept>

#include "analysis/grid.h"
#include "analysis/response.h"
#include "search.h"

namespace analysis {
namespace {

void check_ranges(const std::vector<Interval> &ranges) {
  if (ranges.empty()) throw std::invalid_argument("there is no range to search");
  for (const Interval &range : ranges)
    if (!(range.low >= 0 && range.low <= range.high && range.high <= 1))
      throw std::invalid_argument("a range ascends within 0 to 1");
}

// The highest place of the level over all ranges, or for `sign` = -1 the lowest.
template <class Filter>
Peak furthest(const Filter &filter, const std::vector<Interval> &ranges, double sign) {
  check_ranges(ranges);
  const auto level = [&](double w) { return level_db(filter, w); };
  const auto slope = [&](double w) { return level_slope(filter, w); };
  Peak best{};
  for (const Interval &range : ranges) {
    Samples at{grid(filter, range), {}, {}};
    for (const double w : at.w) {
      at.level.push_back(level(w));
      at.slope.push_back(slope(w));
    }
    const Peak found = extremum(at, sign, level, slope);
    if (&range == &ranges.front() || sign * found.db > sign * best.db) best = found;
  }
  return best;
}

template <class Filter>
Extremes both(const Filter &filter, const std::vector<Interval> &ranges) {
  return {furthest(filter, ranges, 1.0), furthest(filter, ranges, -1.0)};
}

double height(const Extremes &found) { return found.highest.db - found.lowest.db; }

}  // namespace

Extremes extremes(const Roots &filter, const std::vector<Interval> &ranges) {
  return both(filter, ranges);
}

Extremes extremes(const Sections &filter, const std::vector<Interval> &ranges) {
  return both(filter, ranges);
}

double ripple_reached(const Roots &filter, const std::vector<Interval> &passband) {
  return height(extremes(filter, passband));
}

double ripple_reached(const Sections &filter, const std::vector<Interval> &passband) {
  return height(extremes(filter, passband));
}

double attenuation_reached(const Roots &filter, const std::vector<Interval> &stopband,
                           double reference_db) {
  return reference_db - furthest(filter, stopband, 1.0).db;
}

double attenuation_reached(const Sections &filter, const std::vector<Interval> &stopband,
                           double reference_db) {
  return reference_db - furthest(filter, stopband, 1.0).db;
}

}  // namespace analysis
