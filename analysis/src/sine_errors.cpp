#include "sine_errors.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "section_powers.h"

namespace analysis {
namespace {

// What a1 and a2 may differ from 2 and 1, both together.
constexpr double close_to_whole = 0.5;

}  // namespace

std::vector<double> sine_error_in_floats(const RoundedSection &section, const FrequencySteps &steps,
                                         double relative) {
  std::vector<double> error(steps.size(), 0.0);
  const std::vector<double> &c = cosines(section, steps);
  const CosinePolynomial numerator = squared_magnitude(section.numerator);
  const SectionPowers here = section_powers(section, steps);
  for (const SlowSum &one : section.slow_sums) {
    for (std::size_t i = 0; i < error.size(); ++i) {
      const double sum = at(one.sum, c[i]) * here.inverse_denominator[i];
      const double above = at(numerator, c[i]);
      if (!(above > 0)) continue;
      // A unit's square is 12 times the error's power, of a sine half of its amplitude's square.
      const double units = at(one.added, c[i]) / (6 * relative * sum);
      error[i] += relative / 2 * sum / above * std::min(1.0, 1 / std::sqrt(units));
    }
  }
  return error;
}

std::vector<double> sine_error_in_fixed_point(const RoundedSection &section,
                                              const FrequencySteps &steps,
                                              const std::vector<double> &input,
                                              const std::vector<double> &noise) {
  std::vector<double> error(steps.size(), 0.0);
  const double a1 = section.denominator.at_one - section.denominator.ends;
  if (std::fabs(2 + a1) + std::fabs(section.denominator.slant) > close_to_whole) return error;
  const std::vector<double> &c = cosines(section, steps);
  const CosinePolynomial numerator = squared_magnitude(section.numerator);
  const SectionPowers here = section_powers(section, steps);
  double dither = 0;
  for (std::size_t i = 0; i < noise.size(); ++i)
    dither += steps.share[i] * std::ldexp(noise[i] * at(numerator, c[i]), 2 * section.exponent);
  // The first harmonic of a quantizer's error, behind normal noise of this power.
  const double left = std::exp(-4 * std::numbers::pi * std::numbers::pi * dither);
  for (std::size_t i = 0; i < error.size(); ++i) {
    const double scale = std::ldexp(input[i], 2 * section.exponent);
    const double added = scale * at(numerator, c[i]);
    // What leaves the unit of y - 2 y' + y''.
    const double curvature = 4 * c[i] * c[i] * scale * here.response[i];
    const double units = std::sqrt(std::min(added, curvature));
    // At most the sine itself, of half the power of its amplitude.
    if (added > 0) error[i] = left * std::min(0.5, 1 / (12 * added) * std::min(1.0, 1 / units));
  }
  return error;
}

}  // namespace analysis
