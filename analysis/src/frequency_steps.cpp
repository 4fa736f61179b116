#include "frequency_steps.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "analysis/stability.h"

namespace analysis {
namespace {

constexpr double part_of_distance = 1.0 / 3;
// Where a pole is on the circle, the steps beside it are not shorter than this.
constexpr double shortest = 1e-14;

/** A pole by its angle and its distance from the circle. */
struct Place {
  double angle, distance;
};

std::vector<Place> places(const std::vector<Complex> &poles) {
  std::vector<Place> found;
  for (const Complex &pole : poles)
    if (pole.imag() >= 0) found.push_back({std::arg(pole), std::fabs(distance_inside(pole))});
  std::sort(found.begin(), found.end(),
            [](const Place &x, const Place &y) { return x.angle < y.angle; });
  return found;
}

/** The distance from a point of the circle to the nearest pole, within a factor of the square root
 *  of two: along the circle, or to it. Angles ascend from call to call. */
class Nearest {
 public:
  explicit Nearest(const std::vector<Complex> &poles) : places_(places(poles)) {
    // What lies behind is nearest by angle + distance, or by its distance; ahead likewise.
    ahead_.assign(places_.size() + 1, far);
    for (std::size_t i = places_.size(); i-- > 0;)
      ahead_[i] = std::min(ahead_[i + 1], places_[i].angle + places_[i].distance);
  }

  double operator()(double angle) {
    while (next_ < places_.size() && places_[next_].angle <= angle) {
      behind_ = std::max(behind_, places_[next_].angle - places_[next_].distance);
      ++next_;
    }
    return std::min({angle - behind_, ahead_[next_] - angle, 1.0});
  }

 private:
  static constexpr double far = 100;
  std::vector<Place> places_;
  std::vector<double> ahead_;
  double behind_ = -far;
  std::size_t next_ = 0;
};

}  // namespace

FrequencySteps frequency_steps(const std::vector<Complex> &poles) {
  FrequencySteps steps;
  Nearest nearest(poles);
  const double end = std::numbers::pi;
  for (double from = 0; from < end;) {
    const double step = std::max(part_of_distance * nearest(from), shortest);
    // A step that would leave less than half of itself takes the rest.
    const double to = from + 1.5 * step < end ? from + step : end;
    const double angle = from + (to - from) / 2;
    const double half = std::sin(angle / 2), other = std::cos(angle / 2);
    steps.w.push_back(angle / end);
    steps.share.push_back((to - from) / end);
    steps.from_one.push_back(2 * half * half);
    steps.from_minus_one.push_back(2 * other * other);
    steps.sine.push_back(2 * half * other);
    from = to;
  }
  return steps;
}

}  // namespace analysis
