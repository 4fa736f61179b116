#include "analysis/crossing.h"

#include <limits>

#include "analysis/grid.h"
#include "analysis/response.h"
#include "search.h"

namespace analysis {
namespace {

template <class Filter>
class Finder {
 public:
  Finder(const Filter &filter, double db) : filter_(filter), db_(db) {}

  std::vector<double> within(const Interval &range) {
    const std::vector<double> points = grid(filter_, range);
    Place last = place(points.front());
    for (const double w : points) {
      const Place next = place(w);
      step(last, next);
      last = next;
    }
    return found_;
  }

 private:
  struct Place {
    double w, level, slope;
  };

  Place place(double w) const { return {w, level_db(filter_, w), level_slope(filter_, w)}; }

  bool above(double w) const { return level_db(filter_, w) > db_; }

  // Between two points: a crossing, or two of them on both sides of an extremum.
  void step(const Place &low, const Place &high) {
    const bool is_above = low.level > db_;
    if (is_above != (high.level > db_)) {
      cross(low.w, high.w, is_above);
      return;
    }
    const double towards = is_above ? -1.0 : 1.0;
    const std::vector<Bracket> turns =
        brackets({{low.w, high.w}, {low.level, high.level}, {low.slope, high.slope}}, towards);
    if (turns.empty() || !(turns.front().bound > towards * db_)) return;
    const double turn = turning_point(low.w, high.w, towards * low.slope, towards * high.slope,
                                      [&](double w) { return towards * level_slope(filter_, w); });
    if (above(turn) == is_above) return;
    cross(low.w, turn, is_above);
    cross(turn, high.w, !is_above);
  }

  void cross(double low, double high, bool is_above) {
    found_.push_back(bisect(low, high, [&](double w) { return above(w) == is_above; }));
  }

  const Filter &filter_;
  double db_;
  std::vector<double> found_;
};

enum class Which { first, last };

template <class Filter>
double crossing(const Filter &filter, double db, const Interval &range, Which which) {
  const std::vector<double> found = Finder(filter, db).within(range);
  if (found.empty()) return std::numeric_limits<double>::quiet_NaN();
  return which == Which::last ? found.back() : found.front();
}

template <class Filter>
std::vector<double> half_power(const Filter &filter, Band band, const std::vector<double> &cutoffs,
                               double reference_db) {
  const double db = reference_db - half_power_db;
  passband(band, cutoffs);  // raises unless the cutoffs fit the response
  const auto first = [&](const Interval &range) {
    return crossing(filter, db, range, Which::first);
  };
  const auto last = [&](const Interval &range) { return crossing(filter, db, range, Which::last); };
  if (band == Band::lowpass) return {last({0.0, 1.0})};
  if (band == Band::highpass) return {first({0.0, 1.0})};
  const Interval below{0.0, band_centre(cutoffs[0], cutoffs[1])}, above{below.high, 1.0};
  if (band == Band::bandstop) return {last(below), first(above)};
  return {first(below), last(above)};
}

}  // namespace

std::vector<double> crossings(const Roots &filter, double db, const Interval &range) {
  return Finder(filter, db).within(range);
}

std::vector<double> crossings(const Sections &filter, double db, const Interval &range) {
  return Finder(filter, db).within(range);
}

std::vector<double> half_power_points(const Roots &filter, Band band,
                                      const std::vector<double> &cutoffs, double reference_db) {
  return half_power(filter, band, cutoffs, reference_db);
}

std::vector<double> half_power_points(const Sections &filter, Band band,
                                      const std::vector<double> &cutoffs, double reference_db) {
  return half_power(filter, band, cutoffs, reference_db);
}

}  // namespace analysis
