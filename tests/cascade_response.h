// What a cascade does to a sine, as plainly as it can be computed: the judge of sections that the
// command printed, by no formula of the library's own.
#ifndef TESTS_CASCADE_RESPONSE_H
#define TESTS_CASCADE_RESPONSE_H

#include <cmath>
#include <complex>
#include <cstddef>
#include <numbers>
#include <vector>

/** H at z of sections b0 b1 b2 a1 a2, b0 ... in one list. */
inline std::complex<double> cascade_response(const std::vector<double> &cascade,
                                             std::complex<double> z) {
  const std::complex<double> x = 1.0 / z;
  std::complex<double> response = 1.0;
  for (std::size_t i = 0; i < cascade.size(); i += 5) {
    const double *c = &cascade[i];
    response *= (c[0] + c[1] * x + c[2] * x * x) / (1.0 + c[3] * x + c[4] * x * x);
  }
  return response;
}

/** 20 log10 |H| at a frequency; both in Hz. */
inline double cascade_level_db(const std::vector<double> &cascade, double hz, double samplerate) {
  const double angle = 2.0 * std::numbers::pi * hz / samplerate;
  return 20.0 * std::log10(std::abs(cascade_response(cascade, std::polar(1.0, angle))));
}

#endif
