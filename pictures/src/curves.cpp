#include "pictures/curves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "analysis/phase.h"
#include "analysis/stability.h"
#include "analysis/sweep.h"
#include "ascending.h"
#include "curve_frequencies.h"

namespace pictures {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
// Parts of an axis. Ripples closer than the first are drawn as an area, and no panel shows steps of
// the second.
constexpr double finest_part = 1.0 / 100000, fine_part = 1.0 / 4000;

/** Three neighbouring points of a curve, the middle one beyond both others. */
struct Turn {
  std::array<double, 3> x, y;

  // Where the parabola through them turns.
  double place() const {
    const double before = x[1] - x[0], after = x[2] - x[1];
    const double rise = (y[1] - y[0]) / before, fall = (y[1] - y[2]) / after;
    return x[1] + (rise * after - fall * before) / (2.0 * (rise + fall));
  }
};

// Where a curve has extrema between its points, in ascending order.
std::vector<double> extrema(const Curve &curve) {
  std::vector<double> places;
  for (std::size_t i = 1; i + 1 < curve.x.size(); ++i) {
    const Turn turn{{curve.x[i - 1], curve.x[i], curve.x[i + 1]},
                    {curve.y[i - 1], curve.y[i], curve.y[i + 1]}};
    if (!((turn.y[1] - turn.y[0]) * (turn.y[1] - turn.y[2]) > 0.0)) continue;
    const double place = turn.place();
    if (place < curve.x[i] || place > curve.x[i]) places.push_back(place);
  }
  return places;
}

Curve merged(const Curve &curve, const Curve &more) {
  Curve all;
  std::size_t next = 0;
  for (std::size_t i = 0; i < curve.x.size(); ++i) {
    for (; next < more.x.size() && more.x[next] < curve.x[i]; ++next)
      all.add(more.x[next], more.y[next]);
    all.add(curve.x[i], curve.y[i]);
  }
  return all;
}

/** Computes the values of a curve at many frequencies, given as fractions of the Nyquist frequency. */
template <class Values>
Curve sampled(const DrawnFilter &filter, const std::vector<double> &frequencies,
              const Values &values) {
  Curve curve{{}, values(frequencies)};
  for (const double w : frequencies) curve.x.push_back(w * filter.nyquist());
  return curve;
}

// One frequency after the other.
template <class Value>
auto each(const Value &value) {
  return [&value](const std::vector<double> &frequencies) {
    std::vector<double> values;
    values.reserve(frequencies.size());
    for (const double w : frequencies) values.push_back(value(w));
    return values;
  };
}

std::vector<double> times(std::vector<double> values, double factor) {
  for (double &value : values) value *= factor;
  return values;
}

template <class Values>
Curve with_extrema(const DrawnFilter &filter, const std::vector<double> &frequencies,
                   const Values &values) {
  const Curve curve = sampled(filter, frequencies, values);
  Curve turns{extrema(curve), {}};
  std::vector<double> places = turns.x;
  for (double &place : places) place /= filter.nyquist();
  turns.y = values(places);
  return merged(curve, turns);
}

// The frequencies within the curve at which the phase jumps, in Hz, ascending.
std::vector<double> phase_jumps(const DrawnFilter &filter, const Curve &phase) {
  std::vector<double> list;
  for (const analysis::Complex &zero : filter.roots.zeros)
    if (std::fabs(analysis::distance_inside(zero)) <= analysis::on_circle)
      list.push_back(std::fabs(std::arg(zero)) / std::numbers::pi * filter.nyquist());
  std::erase_if(list, [&](double hz) {
    return phase.x.empty() || hz <= phase.x.front() || hz >= phase.x.back();
  });
  return ascending(std::move(list));
}

// A continuous phase, interrupted where it jumps.
Curve without_jumps(const Curve &whole, const std::vector<double> &jumps) {
  constexpr double slack = 1e-12;
  auto next = jumps.begin();
  Curve interrupted;
  for (std::size_t i = 0; i < whole.x.size(); ++i) {
    const double hz = whole.x[i];
    bool at_jump = false;
    for (; next != jumps.end() && *next * (1 - slack) <= hz; ++next) {
      interrupted.add(*next, nan);
      at_jump = hz <= *next * (1 + slack);
    }
    if (!at_jump) interrupted.add(hz, whole.y[i]);
  }
  return interrupted;
}

}  // namespace

Curve level_curve(const DrawnFilter &filter, const Axis &frequencies, Detail detail) {
  const CurveFrequencies places(filter, frequencies);
  if (detail == Detail::live)
    return with_extrema(filter, places.few(),
                        [&](const std::vector<double> &w) { return filter.levels_db(w); });
  return with_extrema(filter, places.spaced(finest_part),
                      each([&](double w) { return filter.level_db(w); }));
}

Curve phase_curve(const DrawnFilter &filter, const Axis &frequencies, Detail detail) {
  const CurveFrequencies places(filter, frequencies);
  constexpr double degrees = 180.0 / std::numbers::pi;
  const Curve whole =
      detail == Detail::live
          ? sampled(filter, places.few(),
                    [&](const std::vector<double> &w) {
                      return times(swept_phases(filter.roots, w), degrees);
                    })
          : sampled(filter, places.spaced(fine_part), each([&](double w) {
                      return unwrapped_phase(filter.roots, w) * 180.0 / std::numbers::pi;
                    }));
  return without_jumps(whole, phase_jumps(filter, whole));
}

Curve delay_curve(const DrawnFilter &filter, const Axis &frequencies, Detail detail) {
  const CurveFrequencies places(filter, frequencies);
  if (detail == Detail::live)
    return sampled(filter, places.few(), [&](const std::vector<double> &w) {
      return times(swept_delays(filter.roots, w), 1.0 / filter.samplerate);
    });
  return sampled(filter, places.spaced(fine_part),
                 each([&](double w) { return group_delay(filter.roots, w) / filter.samplerate; }));
}

double median_delay(const DrawnFilter &filter, const Axis &frequencies, Detail detail) {
  constexpr std::size_t count = 101;
  std::vector<double> places;
  for (std::size_t i = 0; i < count; ++i) {
    const double hz = value_at(frequencies, static_cast<double>(i) / (count - 1));
    places.push_back(std::min(hz / filter.nyquist(), 1.0));
  }
  std::vector<double> delays =
      detail == Detail::live ? swept_delays(filter.roots, places)
                             : each([&](double w) { return group_delay(filter.roots, w); })(places);
  for (double &delay : delays) delay /= filter.samplerate;
  std::nth_element(delays.begin(), delays.begin() + count / 2, delays.end());
  return delays[count / 2];
}

}  // namespace pictures
