#include "fixed_point.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "analysis/fixed_measures.h"
#include "analysis/fixed_scaling.h"
#include "analysis/level_difference.h"
#include "analysis/noise.h"
#include "analysis/stability.h"
#include "designer/limits.h"
#include "designer/refusal.h"

namespace layouts {
namespace {

/** What differs between the two widths. */
struct Width {
  analysis::Arithmetic arithmetic;
  int bits;
  const char *type;
  double most_noise_db;
  const char *instead; /**< a target that holds more */
};

Width width_of(const Target &target) {
  if (target.arithmetic == Arithmetic::fixed_16)
    return {analysis::Arithmetic::fixed_16, 16, "q15", designer::most_fixed_16_noise_db,
            "--for cmsis-q31 has 32 bits, and --for cmsis floats"};
  return {analysis::Arithmetic::fixed_32, 32, "q31", designer::most_fixed_32_noise_db,
          "a target with doubles, such as c, holds it"};
}

double decibels(double ratio) { return 20.0 * std::log10(ratio); }

double power(double db) { return std::pow(10.0, db / 10.0); }

/** Noise at full scale, in dB of the output's peak. */
struct FixedNoise {
  double white_db, sine_db; /**< of the roundings alone */
  double all_db;            /**< of these and of the rounded coefficients, the larger of both */
};

FixedNoise noise_of(const analysis::ScaledCascade &scaled, analysis::Arithmetic arithmetic) {
  // At this level an estimate of the largest output cannot exceed full scale, as none does.
  // Roundings stay the same at any level, and what coefficients do grows with it.
  constexpr double level = 0.25;
  const double gained_db = decibels(1.0 / level);
  const auto at_level = [&](const analysis::Sections &sections) {
    return analysis::noise(sections, analysis::Structure::direct_1, arithmetic, level);
  };
  const analysis::Noise roundings = at_level(sections_of(scaled.cascade));
  const analysis::Noise all = at_level(scaled.wanted);
  const auto at_full_scale = [&](double all_db, double roundings_db) {
    const double coefficients = std::max(0.0, power(all_db) - power(roundings_db));
    return 10.0 * std::log10(coefficients + power(roundings_db - gained_db));
  };
  return {roundings.white_db - gained_db, roundings.sine_db - gained_db,
          std::max(at_full_scale(all.white_db, roundings.white_db),
                   at_full_scale(all.sine_db, roundings.sine_db))};
}

/** The next larger number of two digits. */
double rounded_up(double value) {
  if (!(value > 0.0)) return 0.0;
  const double digit = std::pow(10.0, std::floor(std::log10(value)) - 1.0);
  return std::ceil(value / digit) * digit;
}

std::string scaling_sentence(int shift, const Width &width) {
  std::string safe = "Scaling: no section can overflow, whatever the input within full scale.";
  if (shift == 0) return safe;
  return fmt::format(
      "{} For that, the output is {:.2f} dB below this level; arm_shift_{}(output, {}, output, "
      "count) undoes that, and saturates where the filter overshoots.",
      safe, decibels(std::ldexp(1.0, shift)), width.type, shift);
}

std::string coefficients_sentence(const analysis::Sections &filter,
                                  const analysis::ScaledCascade &scaled, const Width &width,
                                  double samplerate) {
  analysis::Sections rounded = analysis::sections_of(scaled.cascade);
  const double undone = std::ldexp(1.0, scaled.shift);
  for (double *value : {&rounded.back().b0, &rounded.back().b1, &rounded.back().b2})
    *value *= undone;
  const analysis::LevelDifference difference =
      analysis::level_difference(filter, rounded, -width.most_noise_db);
  return fmt::format(
      "Coefficients: multiples of 2^{}, which changes the level by at most {:.2g} dB where it is "
      "above {:g} dB of its peak, most at {:.4g} Hz; the outermost pole is {:.2g} inside the unit "
      "circle.",
      scaled.cascade.postshift + 1 - width.bits, rounded_up(difference.db), width.most_noise_db,
      std::round(difference.w * samplerate * 50.0) / 100.0, analysis::stability(rounded).margin);
}

std::string noise_text(double db) {
  return db > -0.5 ? "as much noise as signal"
                   : fmt::format("noise {:.1f} dB below the output's peak", -db);
}

std::string noise_sentence(const FixedNoise &noise,
                           const std::optional<analysis::FixedMeasures> &measures) {
  const std::string measured =
      measures ? fmt::format("measured: {:.1f} dB, with a mean of {:.1f} units of the last place",
                             -measures->noise_db, measures->offset)
               : "not measured, as it rings for too long";
  return fmt::format(
      "Rounding: noise {:.1f} dB below the output's peak, four times its effective value, for "
      "white noise of full scale ({}), {:.1f} dB for the worst sine.",
      -noise.white_db, measured, -noise.sine_db);
}

std::string limit_cycle_sentence(const analysis::ScaledCascade &scaled,
                                 const std::optional<analysis::FixedMeasures> &measures,
                                 const Width &width) {
  const double units = std::ldexp(1.0, width.bits - 1);
  const std::string found =
      measures ? fmt::format(
                     "; it stayed within {:.0f} after noise and after a constant of either "
                     "sign, all of full scale",
                     measures->limit_cycle)
               : "";
  return fmt::format(
      "Limit cycles: after the input has stopped and rung out, the output stays within {:.0f} "
      "units "
      "of the last place ({:.0f} dB of full scale), whatever it was{}.",
      std::ceil(scaled.error * units), decibels(scaled.error), found);
}

}  // namespace

IntegerFilter in_fixed_point(const analysis::Sections &sections, const Target &target, Noisy noisy,
                             double samplerate) {
  const Width width = width_of(target);
  const analysis::Stability rounded =
      analysis::stability(analysis::with_fixed_feedback(sections, width.arithmetic));
  if (!rounded.stable)
    throw designer::Refusal(fmt::format(
        "--for {} rounds coefficients to {} bits, in which this filter is unstable: its outermost "
        "pole is {:.2g} inside the unit circle before that; {}",
        target.name, width.bits, analysis::stability(sections).margin, width.instead));
  const auto scaled = analysis::scaled_for_fixed(sections, width.arithmetic);
  if (!scaled)
    throw designer::Refusal(fmt::format(
        "--for {} computes in {} bits, in which no scaling of this filter leaves room for a signal "
        "beside its roundings; {}",
        target.name, width.bits, width.instead));
  const FixedNoise noise = noise_of(*scaled, width.arithmetic);
  if (noisy == Noisy::refused && !(noise.all_db <= width.most_noise_db))
    throw designer::Refusal(fmt::format(
        "--for {} computes in {} bits, where this filter makes {}, and {:g} dB are the limit; {} "
        "(--anyway writes it)",
        target.name, width.bits, noise_text(noise.all_db), -width.most_noise_db, width.instead));
  const auto measures = analysis::fixed_measures(scaled->cascade);
  return {analysis::sections_of(scaled->cascade),
          scaled->shift,
          {scaling_sentence(scaled->shift, width),
           coefficients_sentence(sections, *scaled, width, samplerate),
           noise_sentence(noise, measures), limit_cycle_sentence(*scaled, measures, width)},
          {}};
}

}  // namespace layouts
