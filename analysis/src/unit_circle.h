/**
 * A point on the unit circle, and distances from it, with the digits that are left where
 * roots crowd together near the circle.
 */
#ifndef ANALYSIS_UNIT_CIRCLE_H
#define ANALYSIS_UNIT_CIRCLE_H

#include <complex>

#include "analysis/filter.h"

namespace analysis {

/** Where it is wider than double, differences near the circle keep eleven more bits. */
using Wide = long double;
using WideComplex = std::complex<Wide>;

/** z = exp(j angle). */
struct CirclePoint {
  Wide angle;
  Wide cos, sin;
  Wide beyond_one;       /**< 1 - cos, not by subtraction */
  Wide beyond_minus_one; /**< 1 + cos, not by addition */
};

/** The point of the frequency w; 0, 1/2 and 1 give 1, j and -1 without error. */
CirclePoint circle_point(double w);

/** constant + factor cos(angle), without cancellation near both ends of the axis. */
Wide plus_cosine(const CirclePoint &z, Wide constant, Wide factor);

/** z - root. */
WideComplex from_root(const CirclePoint &z, const Complex &root);

/** c0 z + c1 + c2 / z: a quadratic in 1/z, times z. */
WideComplex quadratic_at(const CirclePoint &z, double c0, double c1, double c2);

/** The derivative of ln |value| by the angle, where `derivative` is that of `value`. */
Wide logarithmic_slope(const WideComplex &value, const WideComplex &derivative);

}  // namespace analysis

#endif
