#include "pictures/curves.h"

#include <algorithm>
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
constexpr int even_steps = 600;
constexpr int grid_parts = 4;

// As fractions of the Nyquist frequency, ascending.
std::vector<double> sampling_frequencies(const DrawnFilter &filter, const Axis &axis) {
  const double nyquist = filter.nyquist();
  const double high = std::min(axis.high, nyquist);
  if (!(axis.low < high)) return {};
  const analysis::Interval range{axis.low / nyquist, high / nyquist};
  const std::vector<double> grid = analysis::grid(filter.roots, range);
  std::vector<double> list;
  // The grid has a point on each side of an extremum; a quarter of its step finds the top.
  for (std::size_t i = 0; i + 1 < grid.size(); ++i)
    for (int part = 0; part < grid_parts; ++part)
      list.push_back(grid[i] + (grid[i + 1] - grid[i]) * part / grid_parts);
  list.push_back(range.high);
  for (int i = 0; i <= even_steps; ++i)
    list.push_back(value_at(axis, static_cast<double>(i) / even_steps) / nyquist);
  for (const auto *marks : {&filter.cutoffs, &filter.half_power})
    for (const double hz : *marks) list.push_back(hz / nyquist);
  std::erase_if(list, [&](double w) { return w < range.low || w > range.high; });
  return ascending(std::move(list));
}

template <class Function>
Curve sampled(const DrawnFilter &filter, const Axis &axis, const Function &value) {
  Curve curve;
  for (const double w : sampling_frequencies(filter, axis))
    curve.add(w * filter.nyquist(), value(w));
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
  return sampled(filter, frequencies, [&](double w) { return filter.level_db(w); });
}

Curve phase_curve(const DrawnFilter &filter, const Axis &frequencies) {
  const Curve whole = sampled(filter, frequencies, [&](double w) {
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
  return sampled(filter, frequencies,
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
