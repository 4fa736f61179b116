#include "curve_frequencies.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "analysis/grid.h"
#include "ascending.h"

namespace pictures {
namespace {

constexpr int even_steps = 1200, live_steps = 600;

}  // namespace

CurveFrequencies::CurveFrequencies(const DrawnFilter &filter, const Axis &axis)
    : filter_(filter), axis_(axis) {
  const double nyquist = filter.nyquist();
  const double high = std::min(axis.high, nyquist);
  if (axis.low < high) range_ = {axis.low / nyquist, high / nyquist};
}

std::vector<double> CurveFrequencies::spaced(double least_part) const {
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

std::vector<double> CurveFrequencies::few() const {
  if (!(range_.low < range_.high)) return {};
  std::vector<double> list = marks();
  add_even_steps(list, live_steps);
  return within(std::move(list));
}

// Peaks, notches, what is marked, and the ends.
std::vector<double> CurveFrequencies::marks() const {
  std::vector<double> list{range_.low, range_.high};
  for (const auto *roots : {&filter_.roots.zeros, &filter_.roots.poles})
    for (const analysis::Complex &root : *roots)
      list.push_back(std::fabs(std::arg(root)) / std::numbers::pi);
  for (const auto *edges : {&filter_.cutoffs, &filter_.half_power})
    for (const double hz : *edges) list.push_back(hz / filter_.nyquist());
  return list;
}

std::vector<double> CurveFrequencies::ordinary() const {
  std::vector<double> list = analysis::grid(filter_.roots, range_);
  add_even_steps(list, even_steps);
  return within(std::move(list));
}

void CurveFrequencies::add_even_steps(std::vector<double> &list, int count) const {
  for (int i = 0; i <= count; ++i)
    list.push_back(value_at(axis_, static_cast<double>(i) / count) / filter_.nyquist());
}

std::vector<double> CurveFrequencies::within(std::vector<double> list) const {
  std::erase_if(list, [&](double w) { return !(w >= range_.low && w <= range_.high); });
  return ascending(std::move(list));
}

}  // namespace pictures
