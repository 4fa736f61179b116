#include "pictures/mask.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "analysis/band.h"
#include "analysis/crossing.h"

namespace pictures {
namespace {

using analysis::Interval;

/** On which side of a level a region lies. */
enum class Side { below, above };

/** The part of the picture that is seen. */
struct View {
  double nyquist;
  const Axis &frequencies;
  const Axis &levels;
};

// From the level's line to the end of the axis, over an interval of the frequency w.
std::optional<ForbiddenRegion> region(const Interval &interval, double db, Side side,
                                      const View &view) {
  const double first = interval.low * view.nyquist, last = interval.high * view.nyquist;
  const double left = std::max(first, view.frequencies.low);
  const double right = std::min(last, view.frequencies.high);
  const double end = side == Side::below ? view.levels.low : view.levels.high;
  const double line = std::clamp(db, view.levels.low, view.levels.high);
  if (!(left < right) || line == end) return std::nullopt;

  ForbiddenRegion found;
  found.polygon = {{left, left, right, right}, {end, line, line, end}};
  // Neither 0 nor the Nyquist frequency is an edge.
  if (left == first && interval.low > 0.0) found.border.add(left, end);
  if (line == db) {
    found.border.add(left, line);
    found.border.add(right, line);
  } else if (!found.border.x.empty()) {
    found.border.add(left, line);
    found.border.add(left, std::nan(""));
  }
  if (right == last && interval.high < 1.0) {
    if (line != db) found.border.add(right, line);
    found.border.add(right, end);
  }
  return found;
}

std::vector<ForbiddenRegion> regions(const std::vector<Interval> &intervals, double db, Side side,
                                     const View &view) {
  std::vector<ForbiddenRegion> found;
  for (const Interval &interval : intervals)
    if (auto one = region(interval, db, side, view)) found.push_back(std::move(*one));
  return found;
}

}  // namespace

Mask settings_mask(const DrawnFilter &filter, const Axis &frequencies, const Axis &levels) {
  const std::vector<double> &hz = filter.cutoffs;
  if (hz.empty() || (hz.size() == 2 && !(hz[0] < hz[1]))) return {};
  std::vector<double> edges = hz;
  for (double &edge : edges) edge /= filter.nyquist();
  const View view{filter.nyquist(), frequencies, levels};
  if (filter.attenuation)
    return {{}, regions(stopband(filter.response, edges), -*filter.attenuation, Side::above, view)};
  const double loss = filter.ripple.value_or(analysis::half_power_db);
  return {regions(passband(filter.response, edges), -loss, Side::below, view), {}};
}

Mask demand_mask(const analysis::Demand &demand, double samplerate, const Axis &frequencies,
                 const Axis &levels) {
  const analysis::Band band = demanded_band(demand);
  const View view{samplerate / 2, frequencies, levels};
  return {regions(passband(band, demand.passband), -demand.ripple, Side::below, view),
          regions(stopband(band, demand.stopband), -demand.attenuation, Side::above, view)};
}

}  // namespace pictures
