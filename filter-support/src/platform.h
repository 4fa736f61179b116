// What the standard library does not offer everywhere.
#ifndef FILTERMATH_SRC_PLATFORM_H
#define FILTERMATH_SRC_PLATFORM_H

#include <complex>

namespace filtermath {

/** @return 10^x. */
double power_of_ten(double x);

/** @return the point at an angle on the unit circle: (cos, sin). */
std::complex<double> unit_circle(double angle);

}  // namespace filtermath

#endif
