// Filters for tests of fixed point.
#ifndef TESTS_ANALYSIS_FIXED_FILTERS_H
#define TESTS_ANALYSIS_FIXED_FILTERS_H

#include <cmath>
#include <numbers>

#include "analysis/filter.h"

namespace fixed_filters {

/** Two poles at an angle of pi w, and the given numerator times a gain. */
inline analysis::Section resonance(double w, double radius, double gain, double b1, double b2) {
  return {gain, gain * b1, gain * b2, -2 * radius * std::cos(w * std::numbers::pi),
          radius * radius};
}

struct Named {
  const char *name;
  analysis::Sections sections;
};

/** Of all kinds, with poles that both widths hold. */
inline std::vector<Named> all() {
  return {
      {"lowpass", {resonance(0.06, 0.85, 0.01, 2, 1), resonance(0.12, 0.95, 0.02, 2, 1)}},
      {"high peak", {resonance(0.3, 0.98, 1.0, 0, 0)}},
      {"small gain", {resonance(0.3, 0.9, 1e-3, 0, -1), resonance(0.35, 0.9, 0.01, 0, -1)}},
      {"large gain", {resonance(0.3, 0.9, 20.0, 0, -1), resonance(0.35, 0.9, 5.0, 0, -1)}},
      {"highpass", {resonance(0.1, 0.8, 1.0, -2, 1), {0.9, -0.9, 0, -0.7, 0}}},
      {"notch", {resonance(0.2, 0.9, 1.0, -2 * std::cos(0.2 * std::numbers::pi), 1)}},
      {"first order", {{0.1, 0.1, 0, -0.8, 0}}},
      {"many sections",
       {resonance(0.2, 0.95, 0.1, 0, -1), resonance(0.3, 0.95, 0.1, 0, -1),
        resonance(0.22, 0.9, 0.1, 0, -1), resonance(0.28, 0.9, 0.1, 0, -1),
        resonance(0.25, 0.88, 0.1, 0, -1)}},
  };
}

}  // namespace fixed_filters

#endif
