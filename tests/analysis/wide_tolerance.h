// How exact the analysis is with long double and without.
#ifndef TESTS_ANALYSIS_WIDE_TOLERANCE_H
#define TESTS_ANALYSIS_WIDE_TOLERANCE_H

#include <cfloat>

// Sines and cosines of frequencies are rounded to the digits of what they are computed in; beside a
// root 1e-8 from the circle that is 5e-12 of the distance with 64 bits and 1e-8 with 53, and of the
// hundreds of roots of a filter a few lie that near.
constexpr double wide_tolerance([[maybe_unused]] double with_long_double,
                                [[maybe_unused]] double with_double) {
#if LDBL_MANT_DIG == 64 && !defined(ANALYSIS_NARROW)
  return with_long_double;
#else
  return with_double;
#endif
}

#endif
