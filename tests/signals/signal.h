// Signals and filters for tests.
#ifndef TESTS_SIGNALS_SIGNAL_H
#define TESTS_SIGNALS_SIGNAL_H

#include <cmath>
#include <cstddef>
#include <numbers>
#include <random>
#include <vector>

#include "analysis/filter.h"

namespace tests {

/** Poles at different angles, none near the circle; the last section is of first order. */
inline analysis::Sections some_sections(std::size_t count) {
  analysis::Sections sections;
  for (std::size_t i = 0; i < count; ++i) {
    const double angle = 0.3 + 0.2 * static_cast<double>(i), radius = 0.9;
    sections.push_back({0.4, -0.3, 0.2, -2.0 * radius * std::cos(angle), radius * radius});
  }
  if (count > 0) sections.back() = {0.1, 0.1, 0.0, -0.8, 0.0};
  return sections;
}

/** Between -1 and 1, always the same. */
inline std::vector<double> noise(std::size_t samples) {
  std::mt19937_64 generator(20260101);
  std::vector<double> signal(samples);
  for (double &sample : signal) sample = static_cast<double>(generator() >> 11U) * 0x1p-52 - 1.0;
  return signal;
}

inline std::vector<double> sine(std::size_t samples, double frequency, double samplerate,
                                double amplitude) {
  std::vector<double> signal(samples);
  for (std::size_t i = 0; i < samples; ++i)
    signal[i] = amplitude *
                std::sin(2.0 * std::numbers::pi * frequency / samplerate * static_cast<double>(i));
  return signal;
}

/** One channel of a signal. */
inline std::vector<double> channel(const std::vector<double> &frames, std::size_t which,
                                   std::size_t channels) {
  std::vector<double> samples;
  for (std::size_t i = which; i < frames.size(); i += channels) samples.push_back(frames[i]);
  return samples;
}

}  // namespace tests

#endif
