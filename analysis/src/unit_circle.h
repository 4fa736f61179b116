/**
 * A point on the unit circle, and distances from it, with the digits that are left where
 * roots crowd together near the circle.
 */
#ifndef ANALYSIS_UNIT_CIRCLE_H
#define ANALYSIS_UNIT_CIRCLE_H

#include <complex>

#include "analysis/filter.h"
#include "wide.h"

namespace analysis {

using WideComplex = std::complex<Wide>;

/** z = exp(j angle). */
struct CirclePoint {
  Wide angle;
  Wide cos, sin;
  Wide beyond_one;       /**< 1 - cos, not by subtraction */
  Wide beyond_minus_one; /**< 1 + cos, not by addition */
};

/** The cosine and the sine of an angle. */
template <class Real>
struct Direction {
  Real cos, sin;
};

/** The point of the frequency w; 0, 1/2 and 1 give 1, j and -1 without error. */
CirclePoint circle_point(double w);

/** The same, with the digits of Extended, at their price. */
Direction<Extended> extended_direction(double w);

/** The sum of two doubles, of which nothing is rounded yet. */
struct TwoTerms {
  double first, second = 0.0;

  Wide sum() const { return static_cast<Wide>(first) + second; }
  TwoTerms operator-() const { return {-first, -second}; }
};

/** constant + factor cos(angle), without cancellation near both ends of the axis. */
Wide plus_cosine(const CirclePoint &z, const TwoTerms &constant, const TwoTerms &factor);

/** z - root. */
WideComplex from_root(const CirclePoint &z, const Complex &root);

/** c0 z + c1 + c2 / z: a quadratic in 1/z, times z. */
WideComplex quadratic_at(const CirclePoint &z, double c0, double c1, double c2);

/** The derivative of ln |value| by the angle, where `derivative` is that of `value`. Neither needs to
 *  have a square. */
Wide logarithmic_slope(const WideComplex &value, const WideComplex &derivative);

}  // namespace analysis

#endif
