/** Refining what a grid has found: extrema by the sign of the slope, crossings by that of the
 *  level. */
#ifndef ANALYSIS_SEARCH_H
#define ANALYSIS_SEARCH_H

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include "analysis/extremes.h"

namespace analysis {

/** A curve on ascending frequencies. */
struct Samples {
  std::vector<double> w;
  std::vector<double> level;
  std::vector<double> slope;
};

/** Halves an interval at whose ends `is_left` differs, true at `low`, until two neighbouring
 *  doubles are left, and returns the upper one. */
template <class Predicate>
double bisect(double low, double high, Predicate is_left) {
  for (;;) {
    const double middle = low + (high - low) / 2;
    if (middle <= low || middle >= high) return high;
    (is_left(middle) ? low : high) = middle;
  }
}

/** A maximum lies between the points i and i + 1. `bound` exceeds every value there unless the
 *  slope is steeper in between than at both ends. */
struct Bracket {
  std::size_t i;
  double bound;
};

/** All brackets of maxima, or for `sign` = -1 of minima, with the bound as for a maximum of the
 *  negative. */
inline std::vector<Bracket> brackets(const Samples &at, double sign) {
  std::vector<Bracket> found;
  for (std::size_t i = 0; i + 1 < at.w.size(); ++i) {
    const double rise = sign * at.slope[i], fall = sign * at.slope[i + 1];
    if (!(rise > 0 && fall < 0)) continue;
    const double highest = std::max(sign * at.level[i], sign * at.level[i + 1]);
    found.push_back({i, highest + std::max(rise, -fall) * (at.w[i + 1] - at.w[i])});
  }
  return found;
}

/**
 * Where the slope falls through 0, by false positions (the Illinois method) with a halving at
 * every third step, until the level varies by less than 1e-13 dB between the last two points.
 * Source: Dahlquist & Bjorck, Numerical Methods, chapter 6, on the method of false position.
 * @param rise, fall  the slope at both ends, positive and negative
 */
template <class Slope>
double turning_point(double low, double high, double rise, double fall, Slope slope) {
  // The weights are the slopes, halved for an end that stays where it is twice running.
  double low_weight = rise, high_weight = fall;
  bool low_moved = false, high_moved = false;
  for (int step = 1;; ++step) {
    const double middle = low + (high - low) / 2;
    if (middle <= low || middle >= high) return middle;
    if (std::max(rise, -fall) * (high - low) < 1e-13) return middle;
    double x = low + (high - low) * (low_weight / (low_weight - high_weight));
    if (step % 3 == 0 || !(x > low && x < high)) x = middle;
    const double found = slope(x);
    if (found > 0) {
      if (low_moved) high_weight /= 2;
      low = x;
      low_weight = rise = found;
    } else {
      if (high_moved) low_weight /= 2;
      high = x;
      high_weight = fall = found;
    }
    low_moved = found > 0;
    high_moved = !low_moved;
  }
}

/**
 * The highest point of the samples and what lies between them, or for `sign` = -1 the lowest.
 * @param level, slope  of the curve at any frequency
 */
template <class Level, class Slope>
Peak extremum(const Samples &at, double sign, Level level, Slope slope) {
  Peak best{-std::numeric_limits<double>::infinity(), at.w.front()};
  for (std::size_t i = 0; i < at.w.size(); ++i)
    if (sign * at.level[i] > best.db) best = {sign * at.level[i], at.w[i]};
  std::vector<Bracket> candidates = brackets(at, sign);
  std::sort(candidates.begin(), candidates.end(),
            [](const Bracket &x, const Bracket &y) { return x.bound > y.bound; });
  for (const Bracket &bracket : candidates) {
    if (bracket.bound <= best.db) break;
    const std::size_t i = bracket.i;
    const double w = turning_point(at.w[i], at.w[i + 1], sign * at.slope[i], sign * at.slope[i + 1],
                                   [&](double x) { return sign * slope(x); });
    const double db = sign * level(w);
    if (db > best.db) best = {db, w};
  }
  best.db *= sign;
  return best;
}

}  // namespace analysis

#endif
