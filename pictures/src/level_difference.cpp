#include "pictures/level_difference.h"

#include <algorithm>
#include <cmath>

#include "ascending.h"
#include "curve_frequencies.h"

namespace pictures {
namespace {

std::vector<double> hertz(const DrawnFilter &filter, const Axis &frequencies, Detail detail) {
  constexpr double fine_part = 1.0 / 4000;
  const CurveFrequencies places(filter, frequencies);
  std::vector<double> list = detail == Detail::live ? places.few() : places.spaced(fine_part);
  for (double &w : list) w *= filter.nyquist();
  return list;
}

std::vector<double> levels(const DrawnFilter &filter, std::vector<double> hz, Detail detail) {
  for (double &one : hz) one = std::min(one / filter.nyquist(), 1.0);
  if (detail == Detail::live) return filter.levels_db(hz);
  for (double &one : hz) one = filter.level_db(one);
  return hz;
}

}  // namespace

Curve level_difference_curve(const DrawnFilter &first, const DrawnFilter &second,
                             const Axis &frequencies, Detail detail) {
  std::vector<double> hz = hertz(first, frequencies, detail);
  const std::vector<double> more = hertz(second, frequencies, detail);
  hz.insert(hz.end(), more.begin(), more.end());
  const double top = std::min(first.nyquist(), second.nyquist());
  std::erase_if(hz, [=](double one) { return one > top; });
  Curve curve{ascending(std::move(hz)), {}};
  const std::vector<double> of_first = levels(first, curve.x, detail);
  const std::vector<double> of_second = levels(second, curve.x, detail);
  for (std::size_t i = 0; i < curve.x.size(); ++i) {
    const bool finite = std::isfinite(of_first[i]) && std::isfinite(of_second[i]);
    curve.y.push_back(finite ? of_first[i] - of_second[i] : std::nan(""));
  }
  return curve;
}

}  // namespace pictures
