#include "pictures/curves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "analysis/grid.h"
#include "analysis/phase.h"
#include "analysis/stability.h"
#include "ascending.h"

namespace pictures {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr int even_steps = 1200;

// Parts of an axis. Ripples closer than the first are drawn as an area, and no panel shows steps of
// the second.
constexpr double finest_part = 1.0 / 100000, fine_part = 1.0 / 4000;

// Frequencies of a filter within an axis, as fractions of the Nyquist frequency, ascending.
class Frequencies {
 public:
  Frequencies(const DrawnFilter &filter, const Axis &axis) : filter_(filter), axis_(axis) {
    const double nyquist = filter.nyquist();
    const double high = std::min(axis.high, nyquist);
    if (axis.low < high) range_ = {axis.low / nyquist, high / nyquist};
  }

  // All that are needed, but no closer than a part of the axis where nothing special lies between.
  std::vector<double> spaced(double least_part) const {
    if (!(range_.low < range_.high)) return {};
    std::vector<double> list = marks();
    double last = -1.0;
    for (const double w : ordinary()) {
      const double place = fraction_along(axis_, w * filter_.nyquist());
      if (place - last < least_part) continue;
      last = place;
      list.push_back(w);
    }
    return within(std::move(list));
  }

 private:
  // Peaks, notches, what is marked, and the ends.
  std::vector<double> marks() const {
    std::vector<double> list{range_.low, range_.high};
    for (const auto *roots : {&filter_.roots.zeros, &filter_.roots.poles})
      for (const analysis::Complex &root : *roots)
        list.push_back(std::fabs(std::arg(root)) / std::numbers::pi);
    for (const auto *edges : {&filter_.cutoffs, &filter_.half_power})
      for (const double hz : *edges) list.push_back(hz / filter_.nyquist());
    return list;
  }

  std::vector<double> ordinary() const {
    std::vector<double> list = analysis::grid(filter_.roots, range_);
    for (int i = 0; i <= even_steps; ++i)
      list.push_back(value_at(axis_, static_cast<double>(i) / even_steps) / filter_.nyquist());
    return within(std::move(list));
  }

  std::vector<double> within(std::vector<double> list) const {
    std::erase_if(list, [&](double w) { return !(w >= range_.low && w <= range_.high); });
    return ascending(std::move(list));
  }

  const DrawnFilter &filter_;
  const Axis &axis_;
  analysis::Interval range_{0.0, 0.0};
};

/** Three neighbouring points of a curve, the middle one beyond both others. */
struct Turn {
  std::array<double, 3> x, y;

  // Where the parabola through them turns.
  double place() const {
    const double before = x[1] - x[0], after = x[2] - x[1];
    const double rise = (y[1] - y[0]) / before, fall = (y[1] - y[2]) / after;
    return x[1] + (rise * after - fall * before) / (2.0 * (rise + fall));
  }
};

// The curve with a point at each extremum between its own.
template <class Function>
Curve with_extrema(const Curve &curve, const Function &value) {
  Curve all;
  for (std::size_t i = 0; i < curve.x.size(); ++i) {
    const bool inside = i > 0 && i + 1 < curve.x.size();
    double place = std::numeric_limits<double>::quiet_NaN();
    if (inside) {
      const Turn turn{{curve.x[i - 1], curve.x[i], curve.x[i + 1]},
                      {curve.y[i - 1], curve.y[i], curve.y[i + 1]}};
      if ((turn.y[1] - turn.y[0]) * (turn.y[1] - turn.y[2]) > 0.0) place = turn.place();
    }
    if (place < curve.x[i]) all.add(place, value(place));
    all.add(curve.x[i], curve.y[i]);
    if (place > curve.x[i]) all.add(place, value(place));
  }
  return all;
}

template <class Function>
Curve sampled(const DrawnFilter &filter, const std::vector<double> &frequencies,
              const Function &value) {
  Curve curve;
  for (const double w : frequencies) curve.add(w * filter.nyquist(), value(w));
  return curve;
}

// The frequencies within the curve at which the phase jumps, in Hz, ascending.
std::vector<double> phase_jumps(const DrawnFilter &filter, const Curve &phase) {
  std::vector<double> list;
  for (const analysis::Complex &zero : filter.roots.zeros)
    if (std::fabs(analysis::distance_inside(zero)) <= analysis::on_circle)
      list.push_back(std::fabs(std::arg(zero)) / std::numbers::pi * filter.nyquist());
  std::erase_if(list, [&](double hz) {
    return phase.x.empty() || hz <= phase.x.front() || hz >= phase.x.back();
  });
  return ascending(std::move(list));
}

}  // namespace

Curve level_curve(const DrawnFilter &filter, const Axis &frequencies) {
  const auto level = [&](double w) { return filter.level_db(w); };
  const Curve curve = sampled(filter, Frequencies(filter, frequencies).spaced(finest_part), level);
  return with_extrema(curve, [&](double hz) { return level(hz / filter.nyquist()); });
}

Curve phase_curve(const DrawnFilter &filter, const Axis &frequencies) {
  const auto places = Frequencies(filter, frequencies).spaced(fine_part);
  const Curve whole = sampled(filter, places, [&](double w) {
    return unwrapped_phase(filter.roots, w) * 180.0 / std::numbers::pi;
  });
  constexpr double slack = 1e-12;
  const std::vector<double> jumps = phase_jumps(filter, whole);
  auto next = jumps.begin();
  Curve interrupted;
  for (std::size_t i = 0; i < whole.x.size(); ++i) {
    const double hz = whole.x[i];
    bool at_jump = false;
    for (; next != jumps.end() && *next * (1 - slack) <= hz; ++next) {
      interrupted.add(*next, nan);
      at_jump = hz <= *next * (1 + slack);
    }
    if (!at_jump) interrupted.add(hz, whole.y[i]);
  }
  return interrupted;
}

Curve delay_curve(const DrawnFilter &filter, const Axis &frequencies) {
  const auto places = Frequencies(filter, frequencies).spaced(fine_part);
  return sampled(filter, places,
                 [&](double w) { return group_delay(filter.roots, w) / filter.samplerate; });
}

double median_delay(const DrawnFilter &filter, const Axis &frequencies) {
  constexpr std::size_t count = 101;
  std::vector<double> delays;
  for (std::size_t i = 0; i < count; ++i) {
    const double hz = value_at(frequencies, static_cast<double>(i) / (count - 1));
    delays.push_back(group_delay(filter.roots, std::min(hz / filter.nyquist(), 1.0)) /
                     filter.samplerate);
  }
  std::nth_element(delays.begin(), delays.begin() + count / 2, delays.end());
  return delays[count / 2];
}

}  // namespace pictures
