// What a published dictionary does as a filter, each of its three forms on its
// own.
#ifndef VELTANE_TESTS_PUBLISHED_FILTER_H
#define VELTANE_TESTS_PUBLISHED_FILTER_H

#include <cmath>
#include <complex>
#include <vector>

using Complex = std::complex<double>;

inline Complex on_circle(double normalized_frequency) {
  return std::polar(1.0, normalized_frequency * 3.14159265358979323846);
}

inline double decibels(const Complex &response) { return 20.0 * std::log10(std::abs(response)); }

inline std::vector<Complex> roots_of(const std::vector<double> &flat) {
  std::vector<Complex> roots;
  for (std::size_t i = 0; i + 1 < flat.size(); i += 2) roots.emplace_back(flat[i], flat[i + 1]);
  return roots;
}

// Zeros and poles are taken in turn, so that no partial product overflows.
inline Complex zpk_response(const std::vector<Complex> &zeros, const std::vector<Complex> &poles,
                            double gain, const Complex &z) {
  Complex h = gain;
  for (std::size_t i = 0; i < std::max(zeros.size(), poles.size()); ++i) {
    if (i < zeros.size()) h *= z - zeros[i];
    if (i < poles.size()) h /= z - poles[i];
  }
  return h;
}

inline Complex cascade_response(const std::vector<double> &sections, const Complex &z) {
  const Complex d = 1.0 / z;
  Complex h = 1.0;
  for (std::size_t i = 0; i + 4 < sections.size(); i += 5)
    h *= (sections[i] + d * (sections[i + 1] + d * sections[i + 2])) /
         (1.0 + d * (sections[i + 3] + d * sections[i + 4]));
  return h;
}

inline Complex transfer_response(const std::vector<double> &numerator,
                                 const std::vector<double> &denominator, const Complex &z) {
  const auto evaluate = [d = 1.0 / z](const std::vector<double> &coefficients) {
    Complex sum = 0.0;
    for (auto it = coefficients.rbegin(); it != coefficients.rend(); ++it) sum = sum * d + *it;
    return sum;
  };
  return evaluate(numerator) / evaluate(denominator);
}

#endif
