#include "section_powers.h"

#include <cmath>
#include <limits>

namespace analysis {
namespace {

// q z on the unit circle.
Complex at_step(const Trinomial &q, double c, double sine) {
  return {q.at_one - q.ends * c, q.slant * sine};
}

SectionPowers powers(const Trinomial &numerator, const Trinomial &denominator,
                     const std::vector<double> &c, const FrequencySteps &steps) {
  SectionPowers found;
  found.inverse_denominator.resize(steps.size());
  found.response.resize(steps.size());
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const double inverse = 1 / std::norm(at_step(denominator, c[i], steps.sine[i]));
    found.inverse_denominator[i] = inverse;
    found.response[i] = std::norm(at_step(numerator, c[i], steps.sine[i])) * inverse;
  }
  return found;
}

/** A product of 1 + error, less 1, at each step. */
class ProductError {
 public:
  explicit ProductError(std::size_t count) : real_(count), imaginary_(count) {}

  // By 1 + error / q.
  void multiply(const Trinomial &q, const Trinomial &error, const std::vector<double> &c,
                const FrequencySteps &steps) {
    if (error.at_one == 0 && error.ends == 0 && error.slant == 0) return;
    for (std::size_t i = 0; i < real_.size(); ++i) {
      const Complex value = at_step(q, c[i], steps.sine[i]);
      const double size = std::norm(value);
      if (size == 0) continue;
      const Complex off = at_step(error, c[i], steps.sine[i]);
      const double x = (off.real() * value.real() + off.imag() * value.imag()) / size;
      const double y = (off.imag() * value.real() - off.real() * value.imag()) / size;
      const double real = real_[i], imaginary = imaginary_[i];
      real_[i] += x + (real * x - imaginary * y);
      imaginary_[i] += y + (real * y + imaginary * x);
    }
  }

  Complex operator[](std::size_t place) const { return {real_[place], imaginary_[place]}; }

 private:
  std::vector<double> real_, imaginary_;
};

// Errors of q of a certain power.
void add_spread(std::vector<double> &sum, const Trinomial &q, double spread,
                const std::vector<double> &c, const FrequencySteps &steps) {
  if (spread == 0) return;
  for (std::size_t i = 0; i < sum.size(); ++i) {
    const double size = std::norm(at_step(q, c[i], steps.sine[i]));
    if (size > 0) sum[i] += spread / size;
  }
}

}  // namespace

const std::vector<double> &cosines(const RoundedSection &section, const FrequencySteps &steps) {
  return section.turned ? steps.from_minus_one : steps.from_one;
}

SectionPowers section_powers(const RoundedSection &section, const FrequencySteps &steps) {
  return powers(section.numerator, section.denominator, cosines(section, steps), steps);
}

std::vector<double> wanted_response(const RoundedSection &section, const FrequencySteps &steps) {
  return powers(section.wanted_numerator, section.wanted_denominator, cosines(section, steps),
                steps)
      .response;
}

std::array<double, 5> moments(const std::vector<double> &weights, const std::vector<double> &c,
                              const FrequencySteps &steps) {
  std::array<double, 5> found{};
  for (std::size_t i = 0; i < weights.size(); ++i) {
    const double weight = weights[i] * steps.share[i], square = c[i] * c[i];
    found[0] += weight;
    found[1] += weight * c[i];
    found[2] += weight * square;
    found[3] += weight * square * c[i];
    found[4] += weight * square * square;
  }
  return found;
}

Deviation deviation(const std::vector<RoundedSection> &sections, const FrequencySteps &steps) {
  ProductError above(steps.size()), below(steps.size());
  Deviation found{std::vector<double>(steps.size()), std::vector<double>(steps.size())};
  for (const RoundedSection &s : sections) {
    const std::vector<double> &c = cosines(s, steps);
    above.multiply(s.wanted_numerator, s.numerator_error, c, steps);
    below.multiply(s.wanted_denominator, s.denominator_error, c, steps);
    add_spread(found.sine, s.wanted_numerator, s.numerator_spread, c, steps);
    add_spread(found.sine, s.wanted_denominator, s.denominator_spread, c, steps);
  }
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const double error = std::norm(above[i] - below[i]) / std::norm(1.0 + below[i]);
    // Errors beyond the range of doubles.
    found.response[i] = std::isnan(error) ? std::numeric_limits<double>::infinity() : error;
  }
  return found;
}

}  // namespace analysis
