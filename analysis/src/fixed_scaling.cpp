#include "analysis/fixed_scaling.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/grid.h"
#include "analysis/impulse_norms.h"
#include "analysis/noise.h"
#include "analysis/response.h"
#include "analysis/stability.h"

namespace analysis {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int largest_shift = 30;
// Postshifts tried beyond the one that the feedback terms need.
constexpr int more_room = 2;
// Of all roundings together, as a part of full scale.
constexpr double most_error = 0.5;
constexpr int most_rounds = 8;

// A numerator whose integers are in proportion to it within this is as good as any.
constexpr double well_rounded = 1e-4;
constexpr double least_gain = 0.75;  // of the largest one, for a numerator that rounds better
constexpr int gains_tried = 64;

constexpr double passband_db = 3.0;

Section with_gain(const Section &section, double gain) {
  return {gain * section.b0, gain * section.b1, gain * section.b2, section.a1, section.a2};
}

Sections followed_by(Sections sections, const Section &next) {
  sections.push_back(next);
  return sections;
}

double largest_numerator(const Section &section) {
  return std::max({std::fabs(section.b0), std::fabs(section.b1), std::fabs(section.b2)});
}

/** The integers with one postshift, as the values that they stand for. */
class Integers {
 public:
  Integers(Arithmetic arithmetic, int bits, int postshift)
      : arithmetic_(arithmetic), bits_(bits), postshift_(postshift) {}

  double unit() const { return std::ldexp(1.0, 1 - bits_); }
  double largest() const { return std::ldexp(1.0 - unit(), postshift_); }
  double step() const { return std::ldexp(unit(), postshift_); }

  double rounded(double value) const {
    const double range = std::ldexp(1.0, postshift_);
    return std::clamp(std::nearbyint(value / step()) * step(), -range, largest());
  }

  Section rounded(const Section &s) const {
    return {rounded(s.b0), rounded(s.b1), rounded(s.b2), -rounded(-s.a1), -rounded(-s.a2)};
  }

  Section with_feedback_rounded(const Section &s) const {
    return {s.b0, s.b1, s.b2, -rounded(-s.a1), -rounded(-s.a2)};
  }

  /** How far the rounded numerator is out of proportion, relative to the numerator. */
  double disproportion(const Section &s) const {
    const double size = std::hypot(s.b0, s.b1, s.b2);
    return std::hypot(rounded(s.b0) - s.b0, rounded(s.b1) - s.b1, rounded(s.b2) - s.b2) / size;
  }

  /** The gain of a section, at most `highest`, that leaves its numerator in proportion. */
  double suitable_gain(const Section &section, double highest) const {
    double best = highest, least = disproportion(with_gain(section, highest));
    if (least <= well_rounded) return best;
    for (int i = 1; i < gains_tried; ++i) {
      const double gain = highest * (1.0 - (1.0 - least_gain) * i / gains_tried);
      const double error = disproportion(with_gain(section, gain));
      if (error < least) least = error, best = gain;
    }
    return best;
  }

  Arithmetic arithmetic() const { return arithmetic_; }

 private:
  Arithmetic arithmetic_;
  int bits_, postshift_;
};

/** The gain that sets the level of `found` as far above that of `wanted` as below it, where that is
 *  near its peak. */
double centring_gain(const Sections &wanted, const Sections &found) {
  Sections both = wanted;
  both.insert(both.end(), found.begin(), found.end());
  std::vector<double> levels, differences;
  for (const double w : grid(both, {0.0, 1.0})) {
    levels.push_back(level_db(wanted, w));
    differences.push_back(level_db(found, w) - levels.back());
  }
  const double peak = *std::max_element(levels.begin(), levels.end());
  double lowest = infinity, highest = -lowest;
  for (std::size_t i = 0; i < levels.size(); ++i) {
    if (!(levels[i] >= peak - passband_db)) continue;
    lowest = std::min(lowest, differences[i]);
    highest = std::max(highest, differences[i]);
  }
  return std::pow(10.0, -(lowest + highest) / 40.0);
}

/** What the output of each section can reach, and what roundings contribute to the last. */
struct Reach {
  std::vector<double> all;
  double error;
};

Reach reach_of(const Sections &filter, double unit) {
  Reach reach{{}, 0.0};
  for (const Norms &norms : norms_from_input(filter)) reach.all.push_back(norms.l1);
  for (std::size_t first = 0; first < filter.size(); ++first) {
    const std::vector<Norms> norms = norms_from_rounding(filter, first);
    for (std::size_t k = 0; k < norms.size(); ++k) reach.all[first + k] += unit * norms[k].l1;
    reach.error += unit * norms.back().l1;
  }
  return reach;
}

/** Sections with gains, as wanted and as integers hold them. */
struct Attempt {
  Sections wanted, rounded;
  int shift;
  bool cramped;  // a larger postshift would allow a larger gain
};

std::optional<Attempt> attempt(const Sections &filter, const Integers &integers,
                               const std::vector<double> &limits) {
  Attempt made{{}, {}, 0, false};
  for (std::size_t i = 0; i + 1 < filter.size(); ++i) {
    const Sections so_far = followed_by(made.rounded, integers.with_feedback_rounded(filter[i]));
    const double reach = norms_from_input(so_far).back().l1;
    const double room = integers.largest() / largest_numerator(filter[i]);
    const double highest = std::min(limits[i] / reach, room);
    if (!(highest > 0.0)) return std::nullopt;
    made.cramped |= highest == room;
    made.wanted.push_back(with_gain(filter[i], integers.suitable_gain(filter[i], highest)));
    made.rounded.push_back(integers.rounded(made.wanted.back()));
  }
  const Section &last = filter.back();
  const Sections whole = followed_by(made.rounded, integers.with_feedback_rounded(last));
  const double gain = centring_gain(filter, whole);
  const double reach = gain * norms_from_input(whole).back().l1;
  const double needed = reach / limits.back();
  const double room = gain * largest_numerator(last) / integers.largest();
  while (std::ldexp(std::max(needed, room), -made.shift) > 1.0)
    if (++made.shift > largest_shift) return std::nullopt;
  made.cramped |= std::ldexp(needed, 1 - made.shift) <= 1.0;
  made.wanted.push_back(with_gain(last, std::ldexp(gain, -made.shift)));
  made.rounded.push_back(integers.rounded(made.wanted.back()));
  return made;
}

struct Outcome {
  std::optional<ScaledCascade> scaled;
  bool cramped;
};

Outcome scaled_within(const Sections &filter, const Integers &integers) {
  const double unit = integers.unit();
  std::vector<double> limits(filter.size(), 1.0 - 4 * unit);
  for (int round = 0; round < most_rounds; ++round) {
    const auto made = attempt(filter, integers, limits);
    if (!made) return {std::nullopt, true};
    const Reach reach = reach_of(made->rounded, unit);
    if (!(reach.error <= most_error)) return {std::nullopt, made->cramped};
    bool fits = true;
    for (std::size_t i = 0; i < filter.size(); ++i) {
      const double excess = reach.all[i] - (1.0 - unit);
      if (!(excess > 0.0)) continue;
      fits = false;
      limits[i] -= 1.1 * excess;
    }
    if (fits)
      return {ScaledCascade{fixed_cascade(made->rounded, integers.arithmetic()), made->wanted,
                            made->shift, reach.all, reach.error},
              made->cramped};
    if (!(*std::min_element(limits.begin(), limits.end()) > 0.0)) break;
  }
  return {std::nullopt, true};
}

FixedCascade feedback_alone(Sections filter, Arithmetic arithmetic) {
  for (Section &section : filter) section.b0 = section.b1 = section.b2 = 0.0;
  return fixed_cascade(filter, arithmetic);
}

// For a signal so small that no estimate of its peaks takes it for one that overflows.
double noise_of(const ScaledCascade &scaled, Arithmetic arithmetic) {
  return noise(scaled.wanted, Structure::direct_1, arithmetic, 0.25).worst_db();
}

}  // namespace

Sections with_fixed_feedback(Sections filter, Arithmetic arithmetic) {
  const Sections poles = sections_of(feedback_alone(filter, arithmetic));
  for (std::size_t i = 0; i < filter.size(); ++i) {
    filter[i].a1 = poles[i].a1;
    filter[i].a2 = poles[i].a2;
  }
  return filter;
}

std::optional<ScaledCascade> scaled_for_fixed(const Sections &filter, Arithmetic arithmetic) {
  const FixedCascade poles = feedback_alone(filter, arithmetic);
  if (!stability(sections_of(poles)).stable) return std::nullopt;
  std::optional<ScaledCascade> best;
  double least = infinity;
  for (int more = 0; more <= more_room; ++more) {
    auto [scaled, cramped] =
        scaled_within(filter, Integers(arithmetic, poles.bits, poles.postshift + more));
    const double db = scaled ? noise_of(*scaled, arithmetic) : infinity;
    if (db < least) {
      best = std::move(scaled);
      least = db;
    }
    if (!cramped) break;
  }
  return best;
}

}  // namespace analysis
