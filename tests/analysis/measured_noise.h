// The noise of a cascade that really runs, beside one in long double.
#ifndef TESTS_ANALYSIS_MEASURED_NOISE_H
#define TESTS_ANALYSIS_MEASURED_NOISE_H

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>
#include <stdexcept>
#include <vector>

#include "analysis/cascade_gain.h"
#include "analysis/extremes.h"
#include "analysis/fixed_point.h"
#include "analysis/noise.h"
#include "analysis/response.h"
#include "analysis/run.h"
#include "analysis/stability.h"

namespace measured {

using analysis::Arithmetic;
using analysis::Sections;
using analysis::Structure;

struct Combination {
  Structure structure;
  Arithmetic arithmetic;
  const char *name;
};

inline constexpr Combination combinations[] = {
    {Structure::direct_1, Arithmetic::doubles, "direct form I, doubles"},
    {Structure::direct_2_transposed, Arithmetic::doubles, "direct form II transposed, doubles"},
    {Structure::state_variable, Arithmetic::doubles, "state variable, doubles"},
    {Structure::direct_1, Arithmetic::floats, "direct form I, floats"},
    {Structure::direct_2_transposed, Arithmetic::floats, "direct form II transposed, floats"},
    {Structure::state_variable, Arithmetic::floats, "state variable, floats"},
    {Structure::direct_1, Arithmetic::fixed_32, "direct form I, 32 bits"},
    {Structure::direct_1, Arithmetic::fixed_16, "direct form I, 16 bits"},
};

inline bool is_fixed_point(Arithmetic arithmetic) {
  return arithmetic == Arithmetic::fixed_32 || arithmetic == Arithmetic::fixed_16;
}

/** Sections whose signals stay within full scale: a peak of about a quarter after each. */
inline Sections within_full_scale(const Sections &filter) {
  Sections spread = analysis::with_gain_spread(filter);
  return analysis::scaled(spread, 0.25);
}

/** Samples until the slowest pole has rung out, and then as many as make a steady mean. */
struct Length {
  std::size_t settling, whole;
};

inline Length length(const Sections &filter) {
  const double slowest = 1 / analysis::stability(filter).margin;
  const double settling = 1000 + 8 * slowest;
  return {static_cast<std::size_t>(settling),
          static_cast<std::size_t>(settling + std::max(20000.0, 20 * slowest))};
}

// Inputs are floats, so that no arithmetic but that of 16 bits rounds them.
inline std::vector<double> white_noise(std::size_t count, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<double> signal(count);
  for (double &sample : signal)
    sample = std::ldexp(static_cast<double>(random() >> 8U) - 0x1p23 + 0.5, -23);
  return signal;
}

inline std::vector<double> sine(std::size_t count, double w) {
  std::vector<double> signal(count);
  for (std::size_t i = 0; i < count; ++i)
    signal[i] = static_cast<float>(
        std::sin(std::fmod(w * static_cast<double>(i), 2.0) * std::numbers::pi + 0.1));
  return signal;
}

inline std::vector<double> limited_to(Arithmetic arithmetic, std::vector<double> signal) {
  const int bits = arithmetic == Arithmetic::fixed_16 ? 15 : 31;
  const double largest = std::ldexp(1.0, bits) - 1;
  if (is_fixed_point(arithmetic))
    for (double &sample : signal)
      sample = std::ldexp(std::min(std::nearbyint(std::ldexp(sample, bits)), largest), -bits);
  return signal;
}

/**
 * The sections in an order in which little noise arises: next comes always the one that leaves the
 * least product of the highest level so far and that of the rest, at the angles of the poles and
 * others between.
 */
inline Sections in_quiet_order(Sections filter) {
  std::vector<double> at;
  for (int i = 1; i < 100; ++i) at.push_back(i / 100.0);
  for (int i = 0; i < 80; ++i) at.push_back(std::pow(10.0, -i / 16.0 - 0.01));
  for (const auto &section : filter)
    at.push_back(std::fabs(std::arg(analysis::quadratic_roots(section.a1, section.a2)[0])) /
                 std::numbers::pi);
  std::vector<std::vector<double>> levels;
  std::vector<double> before(at.size(), 0.0), after(at.size(), 0.0);
  for (const auto &section : filter) {
    levels.emplace_back();
    for (std::size_t i = 0; i < at.size(); ++i) {
      levels.back().push_back(std::max(analysis::level_db(Sections{section}, at[i]), -1000.0));
      after[i] += levels.back()[i];
    }
  }
  Sections ordered;
  while (!filter.empty()) {
    std::size_t best = 0;
    double least = std::numeric_limits<double>::infinity();
    for (std::size_t k = 0; k < filter.size(); ++k) {
      double so_far = -1e300, rest = -1e300;
      for (std::size_t i = 0; i < at.size(); ++i) {
        so_far = std::max(so_far, before[i] + levels[k][i]);
        rest = std::max(rest, after[i] - levels[k][i]);
      }
      if (so_far + rest < least) least = so_far + rest, best = k;
    }
    for (std::size_t i = 0; i < at.size(); ++i) {
      before[i] += levels[best][i];
      after[i] -= levels[best][i];
    }
    ordered.push_back(filter[best]);
    filter.erase(filter.begin() + static_cast<std::ptrdiff_t>(best));
    levels.erase(levels.begin() + static_cast<std::ptrdiff_t>(best));
  }
  return ordered;
}

/** The wanted output: a state-variable form in a wider type T, from the sections' coefficients, in
 *  a quiet order. */
template <class T>
std::vector<T> reference(const Sections &filter, const std::vector<double> &input) {
  const auto root = [](T square) {
    T x = static_cast<T>(std::sqrt(static_cast<long double>(square)));
    for (int i = 0; i < 2; ++i) x = (x + square / x) / 2;
    return x;
  };
  std::vector<T> signal(input.begin(), input.end());
  for (const auto &[b0, b1, b2, a1, a2] : in_quiet_order(filter)) {
    // Turned round where the poles are nearer to z = -1.
    const T turn = a1 > 0 ? -1 : 1;
    const T p1 = turn * T(a1), p2 = T(a2), q0 = T(b0), q1 = turn * T(b1), q2 = T(b2);
    const T near = 1 + p2 + p1, beyond = 1 + p2 - p1;
    const T g = root(near / beyond), both = root(near * beyond);
    const T k = 2 * (1 - p2) / both, h = beyond / 4;
    const T high = (q0 + q2 - q1) / beyond, band = 2 * (q0 - q2) / both,
            low = (q0 + q2 + q1) / near;
    T s1 = 0, s2 = 0;
    for (T &sample : signal) {
      const T hp = h * (sample - (g + k) * s1 - s2);
      const T bp = g * hp + s1;
      const T lp = g * bp + s2;
      s1 = turn * (2 * g * hp + s1);
      s2 = turn * (2 * g * bp + s2);
      sample = high * hp + band * bp + low * lp;
    }
  }
  return signal;
}

inline std::vector<double> run(const Sections &filter, const Combination &combination,
                               const std::vector<double> &input) {
  const bool floats = combination.arithmetic == Arithmetic::floats;
  const std::vector<float> narrow(input.begin(), input.end());
  const auto widened = [](const std::vector<float> &signal) {
    return std::vector<double>(signal.begin(), signal.end());
  };
  if (is_fixed_point(combination.arithmetic))
    return analysis::run_fixed(analysis::fixed_cascade(filter, combination.arithmetic), input)
        .output;
  switch (combination.structure) {
    case Structure::direct_1:
      return floats ? widened(analysis::run_direct_1(filter, narrow))
                    : analysis::run_direct_1(filter, input);
    case Structure::direct_2_transposed:
      return floats ? widened(analysis::run_direct_2_transposed(filter, narrow))
                    : analysis::run_direct_2_transposed(filter, input);
    case Structure::state_variable: break;
  }
  const auto forms = analysis::state_variables(filter).value();
  return floats ? widened(analysis::run_state_variable(forms, narrow))
                : analysis::run_state_variable(forms, input);
}

template <class T>
double error_power(const std::vector<double> &found, const std::vector<T> &wanted,
                   std::size_t settling) {
  double power = 0;
  for (std::size_t i = settling; i < found.size(); ++i) {
    const auto error = static_cast<double>(T(found[i]) - wanted[i]);
    power += error * error;
  }
  power /= static_cast<double>(found.size() - settling);
  return std::isnan(power) ? std::numeric_limits<double>::infinity() : power;
}

template <class T>
double power(const std::vector<T> &signal, std::size_t settling) {
  return error_power(std::vector<double>(signal.size(), 0.0), signal, settling);
}

inline double decibels(double ratio) { return 10 * std::log10(ratio); }

/** As `Noise::white_db`, measured. */
template <class T>
double white_db(const Sections &filter, const Combination &combination,
                const std::vector<double> &input, const std::vector<T> &wanted,
                std::size_t settling) {
  const std::vector<double> found = run(filter, combination, input);
  return decibels(error_power(found, wanted, settling) / (16 * power(wanted, settling)));
}

/** As `Noise::sine_db`, measured at one frequency. */
template <class T>
double sine_db(const Sections &filter, const Combination &combination,
               const std::vector<double> &input, const std::vector<T> &wanted,
               std::size_t settling) {
  const std::vector<double> found = run(filter, combination, input);
  return decibels(error_power(found, wanted, settling)) -
         analysis::extremes(filter, {{0.0, 1.0}}).highest.db;
}

/** Levels of `Noise` as predicted and as measured. */
struct Pair {
  double predicted, actual;
};

struct Comparison {
  Pair white, sine;
};

/** An error this large leaves no signal; by how much it is larger, nobody asks, and where samples
 *  overflow it has a limit that no noise has. */
inline constexpr double lost_db = -15;

inline bool is_lost(double db) { return db >= lost_db; }

/** How much more noise there is than predicted, in dB. */
inline double difference(const Pair &level) {
  if (is_lost(level.predicted) && is_lost(level.actual)) return 0;
  return level.actual - level.predicted;
}

/**
 * Both noises of a filter, predicted and measured. In fixed point it is scaled to stay within full
 * scale. Raises std::invalid_argument where its coefficients are beyond fixed point.
 */
inline Comparison compare(const Sections &given, const Combination &combination, unsigned seed) {
  const bool fixed = is_fixed_point(combination.arithmetic);
  const Sections filter = fixed ? within_full_scale(given) : given;
  const Length samples = length(filter);
  const analysis::Noise predicted =
      analysis::noise(filter, combination.structure, combination.arithmetic);
  Comparison found{{predicted.white_db, 0}, {predicted.sine_db, 0}};
  const auto white = limited_to(combination.arithmetic, white_noise(samples.whole, seed));
  found.white.actual =
      white_db(filter, combination, white, reference<long double>(filter, white), samples.settling);
  const auto tone = limited_to(combination.arithmetic, sine(samples.whole, predicted.sine_w));
  found.sine.actual =
      sine_db(filter, combination, tone, reference<long double>(filter, tone), samples.settling);
  // A filter that is unstable once rounded has no worst sine: it is lost with any.
  if (std::isinf(predicted.sine_db) && !predicted.overflows) found.sine = found.white;
  return found;
}

}  // namespace measured

#endif
