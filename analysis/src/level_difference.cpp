#include "analysis/level_difference.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/grid.h"
#include "analysis/response.h"

namespace analysis {
namespace {

template <class Trusted, class Other>
LevelDifference largest(const Trusted &trusted, const Other &other, double floor_db) {
  const std::vector<double> at = grid(trusted, {0.0, 1.0});
  std::vector<double> levels(at.size());
  std::transform(at.begin(), at.end(), levels.begin(),
                 [&](double w) { return level_db(trusted, w); });
  const double floor = *std::max_element(levels.begin(), levels.end()) - floor_db;

  LevelDifference found{0.0, 0.0};
  for (std::size_t i = 0; i < at.size(); ++i) {
    const double level = level_db(other, at[i]);
    if (std::isnan(levels[i]) || std::isnan(level))
      return {std::numeric_limits<double>::infinity(), at[i]};
    const double first = std::max(levels[i], floor), second = std::max(level, floor);
    const double db = first == second ? 0.0 : std::fabs(first - second);
    if (db > found.db) found = {db, at[i]};
  }
  return found;
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
