#include "live_levels.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "ascending.h"

namespace pictures {
namespace {

using analysis::Interval;

constexpr int steps_refined = 8;

std::vector<double> root_angles(const analysis::Roots &roots) {
  std::vector<double> list{0.0, 1.0};
  for (const auto *some : {&roots.zeros, &roots.poles})
    for (const analysis::Complex &root : *some)
      list.push_back(std::fabs(std::arg(root)) / std::numbers::pi);
  return ascending(std::move(list));
}

// Even parts of an interval, both ends included.
std::vector<double> parts(double low, double high, int count) {
  std::vector<double> list;
  for (int i = 0; i <= count; ++i)
    list.push_back(i == count ? high : low + (high - low) * i / count);
  return list;
}

std::vector<double> places(const analysis::Roots &roots, const std::vector<double> &cutoffs,
                           int steps_between) {
  constexpr int even = 128, decades = 6, in_a_decade = 24;
  std::vector<double> list = parts(0.0, 1.0, even);
  for (int i = 0; i < decades * in_a_decade; ++i)
    list.push_back(std::pow(10.0, -static_cast<double>(i) / in_a_decade));
  list.insert(list.end(), cutoffs.begin(), cutoffs.end());
  if (cutoffs.size() == 2 && cutoffs[0] < cutoffs[1])
    list.push_back(analysis::band_centre(cutoffs[0], cutoffs[1]));
  const std::vector<double> angles = root_angles(roots);
  for (std::size_t i = 0; i + 1 < angles.size(); ++i) {
    const std::vector<double> between = parts(angles[i], angles[i + 1], steps_between);
    list.insert(list.end(), between.begin(), between.end());
  }
  return ascending(std::move(list));
}

}  // namespace

LiveLevels::LiveLevels(const DrawnFilter &filter, const std::vector<double> &cutoffs,
                       Purpose purpose)
    : filter_(filter),
      w_(places(filter.roots, cutoffs, purpose == Purpose::peak ? 4 : 1)),
      db_(filter.levels_db(w_)) {}

double LiveLevels::peak() const {
  // Of waves of one height, the one whose places happen to be highest is as good as any.
  const auto highest =
      static_cast<std::size_t>(std::max_element(db_.begin(), db_.end()) - db_.begin());
  if (!std::isfinite(db_[highest])) return db_[highest];
  return std::max(db_[highest], refined_peak(w_[highest == 0 ? 0 : highest - 1],
                                             w_[std::min(highest + 1, w_.size() - 1)]));
}

double LiveLevels::refined_peak(double low, double high) const {
  constexpr int rounds = 12;
  double best = -std::numeric_limits<double>::infinity();
  for (int round = 0; round < rounds; ++round) {
    const std::vector<double> w = parts(low, high, steps_refined);
    const std::vector<double> db = filter_.levels_db(w);
    const auto at = static_cast<std::size_t>(std::max_element(db.begin(), db.end()) - db.begin());
    best = std::max(best, db[at]);
    low = w[at == 0 ? 0 : at - 1];
    high = w[std::min(at + 1, w.size() - 1)];
  }
  return best;
}

std::optional<double> LiveLevels::crossing(double db, const Interval &range, Which which) const {
  std::optional<std::pair<double, double>> found;
  for (std::size_t i = 0; i + 1 < w_.size(); ++i) {
    if (w_[i] < range.low || w_[i + 1] > range.high || (db_[i] > db) == (db_[i + 1] > db)) continue;
    found = {w_[i], w_[i + 1]};
    if (which == Which::first) break;
  }
  if (!found) return std::nullopt;
  return refined_crossing(found->first, found->second, db);
}

double LiveLevels::refined_crossing(double low, double high, double db) const {
  constexpr int rounds = 13, steps = 16;  // which leave 2^-52 of the interval
  for (int round = 0; round < rounds; ++round) {
    const std::vector<double> w = parts(low, high, steps);
    const std::vector<double> levels = filter_.levels_db(w);
    std::size_t i = 0;
    while (i + 2 < w.size() && (levels[i] > db) == (levels[i + 1] > db)) ++i;
    low = w[i];
    high = w[i + 1];
  }
  return low;
}

std::vector<double> live_edges(const LiveLevels &levels, analysis::Band band,
                               const std::vector<double> &cutoffs, double db) {
  using Which = LiveLevels::Which;
  std::vector<double> found;
  const auto look = [&](const Interval &range, Which which) {
    if (const auto w = levels.crossing(db, range, which)) found.push_back(*w);
  };
  const Interval all{0.0, 1.0};
  if (!analysis::has_two_edges(band)) {
    look(all, band == analysis::Band::lowpass ? Which::last : Which::first);
    return found;
  }
  const Interval below{0.0, analysis::band_centre(cutoffs[0], cutoffs[1])}, above{below.high, 1.0};
  const bool stops = band == analysis::Band::bandstop;
  look(below, stops ? Which::last : Which::first);
  look(above, stops ? Which::first : Which::last);
  return found;
}

}  // namespace pictures
