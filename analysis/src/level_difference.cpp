#include "analysis/level_difference.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "analysis/grid.h"
#include "analysis/response.h"
#include "analysis/stability.h"

namespace analysis {
namespace {

void append(std::vector<Complex> &all, const std::vector<Complex> &more) {
  all.insert(all.end(), more.begin(), more.end());
}

Roots places(const Roots &filter) { return filter; }
Roots places(const Sections &filter) { return roots_of(filter); }
Roots places(const Transfer &) { return {}; }

// Places around each zero on the circle: somewhere on the way down to it a level meets the floor,
// and there the difference turns.
void add_ways_down(std::vector<double> &at, const std::vector<Complex> &zeros) {
  for (const Complex &zero : zeros) {
    const double w = std::fabs(std::arg(zero)) / std::numbers::pi;
    if (zero.imag() < 0 || !(std::fabs(distance_inside(zero)) < 1e-6)) continue;
    for (double beside = 0.125; beside > 1e-9; beside /= 3)
      for (const double place : {w - beside, w + beside})
        if (place > 0 && place < 1) at.push_back(place);
  }
}

// The grid of the roots of both: a zero that has moved is where the difference is largest.
template <class Trusted, class Other>
std::vector<double> common_grid(const Trusted &trusted, const Other &other) {
  Roots all = places(trusted);
  const std::vector<Complex> zeros = all.zeros;
  const Roots more = places(other);
  append(all.zeros, more.zeros);
  append(all.poles, more.poles);
  std::vector<double> at = grid(all, {0.0, 1.0});
  add_ways_down(at, zeros);
  std::sort(at.begin(), at.end());
  at.erase(std::unique(at.begin(), at.end()), at.end());
  return at;
}

// Where a function with one maximum between the ends has it, as closely as it matters for the
// maximum: by golden section, which makes the interval 1e-6 of what it was.
template <class Function>
LevelDifference refined(double low, double high, const Function &function) {
  constexpr double ratio = 1.0 / std::numbers::phi;
  double left = high - ratio * (high - low), right = low + ratio * (high - low);
  double at_left = function(left), at_right = function(right);
  for (int step = 0; step < 29; ++step) {
    if (at_left > at_right) {
      high = right;
      right = left;
      at_right = at_left;
      left = high - ratio * (high - low);
      at_left = function(left);
    } else {
      low = left;
      left = right;
      at_left = at_right;
      right = low + ratio * (high - low);
      at_right = function(right);
    }
  }
  return at_left > at_right ? LevelDifference{at_left, left} : LevelDifference{at_right, right};
}

// Where a difference is large enough for the largest to be near, the grid with three more places
// in each of its steps.
template <class Function>
std::vector<LevelDifference> finer(const std::vector<LevelDifference> &coarse, double enough,
                                   const Function &function) {
  std::vector<LevelDifference> fine;
  for (std::size_t i = 0; i < coarse.size(); ++i) {
    fine.push_back(coarse[i]);
    if (i + 1 == coarse.size() || std::max(coarse[i].db, coarse[i + 1].db) < enough) continue;
    for (const double part : {0.25, 0.5, 0.75}) {
      const double w = coarse[i].w + part * (coarse[i + 1].w - coarse[i].w);
      fine.push_back({function(w), w});
    }
  }
  return fine;
}

LevelDifference largest_of(const std::vector<LevelDifference> &places) {
  return *std::max_element(
      places.begin(), places.end(),
      [](const LevelDifference &x, const LevelDifference &y) { return x.db < y.db; });
}

template <class Function>
LevelDifference largest_near(const std::vector<LevelDifference> &places, const Function &function) {
  LevelDifference found = largest_of(places);
  const double enough = 0.9 * found.db;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const LevelDifference &before = places[i == 0 ? 0 : i - 1];
    const LevelDifference &after = places[std::min(i + 1, places.size() - 1)];
    if (places[i].db < std::max({enough, before.db, after.db})) continue;
    const LevelDifference closer = refined(before.w, after.w, function);
    if (closer.db > found.db) found = closer;
  }
  return found;
}

template <class Trusted, class Other>
LevelDifference largest(const Trusted &trusted, const Other &other, double floor_db) {
  const std::vector<double> at = common_grid(trusted, other);
  std::vector<double> levels(at.size());
  std::transform(at.begin(), at.end(), levels.begin(),
                 [&](double w) { return level_db(trusted, w); });
  const double floor = *std::max_element(levels.begin(), levels.end()) - floor_db;
  const auto apart = [floor](double level, double other_level) {
    const double first = std::max(level, floor), second = std::max(other_level, floor);
    return first == second ? 0.0 : std::fabs(first - second);
  };

  std::vector<LevelDifference> places;
  for (std::size_t i = 0; i < at.size(); ++i) {
    const double level = level_db(other, at[i]);
    if (std::isnan(levels[i]) || std::isnan(level))
      return {std::numeric_limits<double>::infinity(), at[i]};
    places.push_back({apart(levels[i], level), at[i]});
  }
  const double coarse = largest_of(places).db;
  if (coarse == 0.0 || std::isinf(coarse)) return largest_of(places);
  const auto difference = [&](double w) { return apart(level_db(trusted, w), level_db(other, w)); };
  return largest_near(finer(places, coarse / 2, difference), difference);
}

}  // namespace

LevelDifference level_difference(const Roots &trusted, const Sections &other, double floor_db) {
  return largest(trusted, other, floor_db);
}

LevelDifference level_difference(const Roots &trusted, const Transfer &other, double floor_db) {
  return largest(trusted, other, floor_db);
}

LevelDifference level_difference(const Sections &trusted, const Transfer &other, double floor_db) {
  return largest(trusted, other, floor_db);
}

LevelDifference level_difference(const Sections &trusted, const Sections &other, double floor_db) {
  return largest(trusted, other, floor_db);
}

}  // namespace analysis
