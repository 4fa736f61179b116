#include "noise_prediction.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "power_along.h"
#include "section_powers.h"
#include "sine_errors.h"
#include "wide.h"

namespace analysis {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/** How an arithmetic rounds, as powers. */
struct Rounding {
  double relative;   /**< of an error, to the power of the rounded number */
  double absolute;   /**< of an error, whatever the number is */
  double mean;       /**< of an error itself */
  double smallest;   /**< as `absolute`, where the number is not much larger than that */
  double log2_limit; /**< of the power of the largest number */
};

// The mean of 1 / (12 m^2) over mantissas m from 1 to 2 whose logarithms are spread evenly, times
// the square of 2 u.
double floating_power(double u) { return 4 * u * u * (1 - 0.25) / (2 * std::log(2.0)) / 12; }

Rounding rounding_of(Arithmetic arithmetic) {
  switch (arithmetic) {
    case Arithmetic::doubles: return {floating_power(0x1p-53), 0, 0, 0, 2048};
    case Arithmetic::floats: return {floating_power(0x1p-24), 0, 0, 0x1p-298 / 12, 256};
    case Arithmetic::fixed_32: return {0, 0x1p-62 / 12, -0x1p-32, 0, 0};
    case Arithmetic::fixed_16: return {0, 0x1p-30 / 12, -0x1p-16, 0, 0};
  }
  throw std::invalid_argument("no such arithmetic");
}

double scaled_by(double value, long exponent) {
  return std::ldexp(value, static_cast<int>(std::clamp(exponent, -3000L, 3000L)));
}

std::vector<double> products(std::vector<double> x, const std::vector<double> &y) {
  for (std::size_t i = 0; i < x.size(); ++i) x[i] *= y[i];
  return x;
}

double largest(const std::vector<double> &values) {
  return *std::max_element(values.begin(), values.end());
}

/** Weights summed over the frequencies in a section: as they are, and where its poles shape. */
struct Means {
  std::array<double, 5> plain, shaped;
};

class Prediction {
 public:
  Prediction(const std::vector<RoundedSection> &sections, const FrequencySteps &steps,
             const Rounding &rounding, double amplitude)
      : sections_(sections),
        steps_(steps),
        rounding_(rounding),
        square_(amplitude * amplitude),
        gains_(sections.size()),
        sine_(steps.size(), 0.0),
        noise_before_(steps.size(), 0.0) {}

  Noise run() {
    find_wanted();
    find_gains();
    add_errors();
    add_deviation();
    add_mean();
    return result();
  }

 private:
  double mean_over_steps(const std::vector<double> &values) const {
    double sum = 0;
    for (std::size_t i = 0; i < values.size(); ++i) sum += values[i] * steps_.share[i];
    return sum;
  }

  Means means(const RoundedSection &section, const std::vector<double> &weights,
              const SectionPowers &here) const {
    const std::vector<double> &c = cosines(section, steps_);
    return {moments(weights, c, steps_),
            moments(products(weights, here.inverse_denominator), c, steps_)};
  }

  // The response of the sections as given: its power is what the errors are compared with.
  void find_wanted() {
    PowerAlong wanted(steps_.size());
    for (const RoundedSection &section : sections_)
      wanted.multiply(wanted_response(section, steps_), 2 * section.exponent);
    wanted_ = wanted.relative();
    reference_ = wanted.exponent();
  }

  // From each rounding to the output: sections are taken from the last to the first.
  void find_gains() {
    PowerAlong rest(steps_.size());
    for (std::size_t k = sections_.size(); k-- > 0;) {
      const RoundedSection &section = sections_[k];
      const SectionPowers here = section_powers(section, steps_);
      const Means weights = means(section, rest.relative(), here);
      for (const RoundingSource &source : section.sources)
        gains_[k].push_back({mean(source.gain, source.fed_back ? weights.shaped : weights.plain),
                             rest.exponent() + (source.in_output ? 0 : 2L * section.exponent)});
      rest.multiply(here.response, 2 * section.exponent);
    }
  }

  // From the first section to the last: the levels where it rounds, times their gains.
  void add_errors() {
    PowerAlong input(steps_.size());
    for (std::size_t k = 0; k < sections_.size(); ++k) {
      const RoundedSection &section = sections_[k];
      const SectionPowers here = section_powers(section, steps_);
      const std::vector<double> weights = input.relative();
      const Means levels = means(section, weights, here);
      for (std::size_t n = 0; n < section.sources.size(); ++n) {
        const RoundingSource &source = section.sources[n];
        const double level = mean(source.plain, levels.plain) + mean(source.shaped, levels.shaped);
        const long own = source.in_output ? 2L * section.exponent : 0;
        add_source(source, {white_power() * level, input.exponent() + own}, gains_[k][n]);
      }
      if (rounding_.relative > 0) add_sines(k, input.exponent(), weights, here.inverse_denominator);
      add_errors_at_sine(section, input.exponent(), weights);
      input.multiply(here.response, 2 * section.exponent);
      look_for_overflow(input);
    }
  }

  void add_source(const RoundingSource &source, const Scaled &level, const Scaled &gain) {
    white_ += rounding_.relative *
              scaled_by(level.value * gain.value, level.exponent + gain.exponent - reference_);
    // Of what is smaller than the smallest number, nothing is left: the signal is lost here.
    const double size = scaled_by(level.value, level.exponent);
    const double smallest = source.roundings * rounding_.smallest;
    constant_ +=
        scaled_by((std::min(smallest, size) + source.roundings * rounding_.absolute) * gain.value,
                  gain.exponent - reference_);
    if (size > 0 && size < 12 * smallest) white_ += mean_over_steps(wanted_) * white_power();
  }

  // The same for a sine at each step: the gains times the levels are one polynomial.
  void add_sines(std::size_t k, long exponent, const std::vector<double> &weights,
                 const std::vector<double> &inverse) {
    const RoundedSection &section = sections_[k];
    const auto exponent_of = [&](std::size_t n) {
      return gains_[k][n].exponent + (section.sources[n].in_output ? 2L * section.exponent : 0);
    };
    long highest = std::numeric_limits<long>::min();
    for (std::size_t n = 0; n < section.sources.size(); ++n)
      highest = std::max(highest, exponent_of(n));
    CosinePolynomial shaped{}, plain{};
    for (std::size_t n = 0; n < section.sources.size(); ++n) {
      const double gain = scaled_by(gains_[k][n].value, exponent_of(n) - highest);
      shaped = sum(shaped, times(section.sources[n].shaped, gain));
      plain = sum(plain, times(section.sources[n].plain, gain));
    }
    const double factor = rounding_.relative * scaled_by(0.5, exponent + highest - reference_);
    const std::vector<double> &c = cosines(section, steps_);
    for (std::size_t i = 0; i < sine_.size(); ++i)
      sine_[i] += factor * weights[i] * (at(shaped, c[i]) * inverse[i] + at(plain, c[i]));
  }

  void add_errors_at_sine(const RoundedSection &section, long exponent,
                          const std::vector<double> &weights) {
    std::vector<double> error;
    if (rounding_.relative > 0) {
      error = sine_error_in_floats(section, steps_, rounding_.relative);
    } else {
      const double in_units = square_ / (12 * rounding_.absolute);
      error = weights;
      for (double &power : error) power = scaled_by(power * in_units, exponent);
      error = sine_error_in_fixed_point(section, steps_, error, noise_before_);
      pass_on_noise(section);
    }
    for (std::size_t i = 0; i < sine_.size(); ++i) sine_[i] += wanted_[i] * error[i];
  }

  // What fixed point has added so far, in units, from the input of a section to its output.
  void pass_on_noise(const RoundedSection &section) {
    const SectionPowers here = section_powers(section, steps_);
    for (std::size_t i = 0; i < noise_before_.size(); ++i)
      noise_before_[i] = std::ldexp(noise_before_[i] * here.response[i], 2 * section.exponent) +
                         here.inverse_denominator[i] / 12;
  }

  // The power of evenly spread noise. Sines are given an amplitude of 1, as they are compared with
  // their own output.
  double white_power() const { return square_ / 3; }

  void look_for_overflow(const PowerAlong &output) {
    const std::vector<double> values = output.relative();
    const auto exponent = static_cast<double>(output.exponent());
    const auto exceeds = [&](double power) {
      return std::log2(power) + exponent > rounding_.log2_limit;
    };
    sine_overflows_ = sine_overflows_ || exceeds(largest(values) * square_);
    white_overflows_ = white_overflows_ || exceeds(16 * mean_over_steps(values) * white_power());
  }

  void add_deviation() {
    const Deviation error = deviation(sections_, steps_);
    white_ += mean_over_steps(products(error.response, wanted_)) * white_power();
    for (std::size_t i = 0; i < sine_.size(); ++i)
      sine_[i] += wanted_[i] * (error.response[i] + error.sine[i]) / 2;
  }

  // What always rounds downwards adds a constant, which later sections pass on as any other.
  void add_mean() {
    if (rounding_.mean == 0) return;
    Extended sum = 0, rest = 1;
    for (std::size_t k = sections_.size(); k-- > 0;) {
      const RoundedSection &section = sections_[k];
      const Extended below = at_dc(section, section.denominator);
      sum += rest / below;
      rest *= std::ldexp(at_dc(section, section.numerator), section.exponent) / below;
    }
    const auto mean = static_cast<double>(sum * rounding_.mean);
    constant_ += scaled_by(mean * mean, -reference_);
  }

  static Extended at_dc(const RoundedSection &section, const Trinomial &q) {
    return section.turned ? turned_round(q).at_one : q.at_one;
  }

  Noise result() const {
    const auto decibels = [](double power) { return 10 * std::log10(power); };
    const auto worst = std::max_element(sine_.begin(), sine_.end());
    const double white = (white_ + constant_) / (16 * mean_over_steps(wanted_) * white_power());
    const double sine = (*worst + constant_ / square_) / largest(wanted_);
    return {white_overflows_ ? infinity : decibels(white),
            sine_overflows_ ? infinity : decibels(sine),
            steps_.w[static_cast<std::size_t>(worst - sine_.begin())],
            white_overflows_ || sine_overflows_};
  }

  const std::vector<RoundedSection> &sections_;
  const FrequencySteps &steps_;
  const Rounding rounding_;
  const double square_; /**< of the amplitude */

  std::vector<double> wanted_; /**< powers relative to 2^reference_, as all below */
  long reference_ = 0;
  std::vector<std::vector<Scaled>> gains_; /**< for each section and source */
  double white_ = 0;
  double constant_ = 0; /**< what does not depend on the signal */
  std::vector<double> sine_;
  std::vector<double> noise_before_; /**< in fixed point, at each step */
  bool white_overflows_ = false, sine_overflows_ = false;
};

}  // namespace

Noise predicted_noise(const std::vector<RoundedSection> &sections, const FrequencySteps &steps,
                      Arithmetic arithmetic, double amplitude) {
  return Prediction(sections, steps, rounding_of(arithmetic), amplitude).run();
}

}  // namespace analysis
