// The one place that knows which C library has what: a power of ten and a
// combined sine and cosine are common extensions, under different names.

#include "platform.h"

#include <cmath>

namespace filtermath {

double power_of_ten(double x) {
#if defined(__GLIBC__)
  return ::exp10(x);
#elif defined(__APPLE__)
  return ::__exp10(x);
#else
  return std::pow(10.0, x);
#endif
}

std::complex<double> unit_circle(double angle) {
#if defined(__GLIBC__)
  double sine = 0.0;
  double cosine = 0.0;
  ::sincos(angle, &sine, &cosine);
  return {cosine, sine};
#else
  return {std::cos(angle), std::sin(angle)};
#endif
}

}  // namespace filtermath
