#include "analysis/fixed_measures.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "analysis/run.h"
#include "analysis/stability.h"
#include "wide.h"

namespace analysis {
namespace {

constexpr double most_work = 0x1p25;  // samples times sections, of a run
constexpr double shortest = 4096;
constexpr std::size_t noises = 8;  // that a limit cycle is looked for after

/** Lengths in samples. */
struct Lengths {
  std::size_t settling, measured, fading, cycling;

  std::size_t silence() const { return fading + cycling; }
  std::size_t most() const { return settling + measured + silence(); }
};

Lengths lengths(double time_constant, int bits, std::size_t sections) {
  const auto samples = [&](double time_constants, double least) {
    return static_cast<std::size_t>(std::max(least, time_constants * time_constant));
  };
  // To far below a unit, with two time constants for each section: neighbouring poles fade later.
  const double fading = bits * std::numbers::ln2 + 2.0 * static_cast<double>(sections) + 10.0;
  return {samples(8, shortest), samples(20, 8 * shortest), samples(fading, shortest),
          samples(4, shortest)};
}

/** Samples of any value, all equally probable. */
std::vector<double> white_noise(std::size_t count, int bits) {
  std::uint64_t state = 1;
  std::vector<double> signal(count);
  for (double &sample : signal) {
    // A linear congruential generator (Knuth's MMIX), whose high bits are random enough.
    state = state * 6364136223846793005U + 1442695040888963407U;
    sample =
        std::ldexp(std::floor(std::ldexp(static_cast<double>(state >> 32U), bits - 32)), 1 - bits) -
        1.0;
  }
  return signal;
}

double root_of_mean_square(const std::vector<double> &values) {
  double sum = 0.0;
  for (const double value : values) sum += value * value;
  return std::sqrt(sum / static_cast<double>(values.size()));
}

// What is left at the end of the silence after a sound.
double left_after(const FixedCascade &cascade, std::vector<double> sound, const Lengths &length) {
  sound.resize(sound.size() + length.silence(), 0.0);
  const std::vector<double> output = run_fixed(cascade, sound).output;
  double largest = 0.0;
  for (std::size_t i = output.size() - length.cycling; i < output.size(); ++i)
    largest = std::max(largest, std::fabs(output[i]));
  return largest;
}

// The largest of those after constants and after noise that stops at different moments.
double limit_cycle(const FixedCascade &cascade, const std::vector<double> &noise,
                   const Lengths &length) {
  double largest = 0.0;
  for (const double extreme : {1.0, -1.0})
    largest = std::max(largest,
                       left_after(cascade, std::vector<double>(length.settling, extreme), length));
  for (std::size_t i = 0; i < noises; ++i) {
    const auto start = noise.begin() + static_cast<std::ptrdiff_t>(i * length.measured / noises);
    const auto end = start + static_cast<std::ptrdiff_t>(length.settling);
    largest = std::max(largest, left_after(cascade, {start, end}, length));
  }
  return largest;
}

}  // namespace

std::optional<FixedMeasures> fixed_measures(const FixedCascade &cascade) {
  const Sections sections = sections_of(cascade);
  const Stability slowest = stability(sections);
  if (!slowest.stable) return std::nullopt;
  const Lengths length = lengths(1 / slowest.margin, cascade.bits, sections.size());
  if (static_cast<double>(length.most()) * static_cast<double>(sections.size()) > most_work)
    return std::nullopt;

  const std::vector<double> input = white_noise(length.settling + length.measured, cascade.bits);
  const std::vector<Extended> wanted =
      run_direct_1(sections, std::vector<Extended>(input.begin(), input.end()));
  const std::vector<double> found = run_fixed(cascade, input).output;
  std::vector<double> output, error;
  double sum = 0.0;
  for (std::size_t i = length.settling; i < input.size(); ++i) {
    output.push_back(static_cast<double>(wanted[i]));
    error.push_back(static_cast<double>(static_cast<Extended>(found[i]) - wanted[i]));
    sum += error.back();
  }
  const double peak = 4.0 * root_of_mean_square(output);
  if (!(peak > 0.0)) return std::nullopt;

  const double units = std::ldexp(1.0, cascade.bits - 1);
  return FixedMeasures{20.0 * std::log10(root_of_mean_square(error) / peak),
                       units * sum / static_cast<double>(error.size()),
                       units * limit_cycle(cascade, input, length)};
}

}  // namespace analysis
