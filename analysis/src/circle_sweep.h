/** Many points of the unit circle, as arrays that loops run over. */
#ifndef ANALYSIS_CIRCLE_SWEEP_H
#define ANALYSIS_CIRCLE_SWEEP_H

#include <cstddef>
#include <vector>

#include "analysis/filter.h"

namespace analysis {

/** The points exp(j pi w) of ascending w. */
struct CircleSweep {
  explicit CircleSweep(const std::vector<double> &w);

  std::size_t size() const { return sin.size(); }

  std::vector<double> half_sin, half_cos; /**< of half the angle */
  std::vector<double> sin;
  std::vector<double> beyond_one;       /**< 1 - cos, not by subtraction */
  std::vector<double> beyond_minus_one; /**< 1 + cos, not by addition */
  std::size_t right;                    /**< how many are nearer to 1 than to -1: the first ones */
};

/** constant + factor cos(angle) of each point, from the nearer end of the axis. */
struct CosineLine {
  double at_one, at_minus_one; /**< with all digits */
  double factor;

  /** @param take  called with the index of each point and the value there */
  template <class Take>
  void along(const CircleSweep &z, const Take &take) const {
    for (std::size_t i = 0; i < z.right; ++i) take(i, at_one - factor * z.beyond_one[i]);
    for (std::size_t i = z.right; i < z.size(); ++i)
      take(i, at_minus_one + factor * z.beyond_minus_one[i]);
  }
};

/** The squared distances of the points from a root, divided by 4^scale, so that those of any root
 *  are doubles. */
class RootDistance {
 public:
  explicit RootDistance(const Complex &root);

  int scale() const { return scale_; }

  /** 1 - |root|^2, divided likewise. */
  double area() const { return area_; }

  double at(const CircleSweep &z, std::size_t i) const {
    const double sine = z.half_sin[i] * half_cos_ - z.half_cos[i] * half_sin_;
    return closest_ + factor_ * (sine * sine);
  }

 private:
  double half_sin_, half_cos_;  // of half the root's angle
  double closest_, factor_;
  double area_;
  int scale_;
};

}  // namespace analysis

#endif
