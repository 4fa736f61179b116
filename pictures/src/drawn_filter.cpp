#include "pictures/drawn_filter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <fmt/format.h>

#include "analysis/crossing.h"
#include "analysis/extremes.h"
#include "analysis/response.h"
#include "analysis/stability.h"
#include "analysis/sweep.h"
#include "designer/refusal.h"
#include "live_levels.h"

namespace pictures {
namespace {

using designer::Family;
using designer::Refusal;

bool is_finite(const analysis::Complex &root) {
  return std::isfinite(root.real()) && std::isfinite(root.imag());
}

bool is_finite(const analysis::Section &s) {
  return std::isfinite(s.b0) && std::isfinite(s.b1) && std::isfinite(s.b2) && std::isfinite(s.a1) &&
         std::isfinite(s.a2);
}

template <class T>
bool all_finite(const std::vector<T> &list) {
  return std::all_of(list.begin(), list.end(), [](const T &one) { return is_finite(one); });
}

bool is_finite(const DrawnFilter &filter) {
  return std::isfinite(filter.roots.gain) && all_finite(filter.roots.zeros) &&
         all_finite(filter.roots.poles) && all_finite(filter.sections);
}

// A pole that is on the circle to the last digit leaves no response to draw.
bool is_on_circle(const analysis::Complex &pole) {
  constexpr double last_digit = 4e-16;
  return std::fabs(analysis::distance_inside(pole)) <= last_digit;
}

bool is_outside(const analysis::Complex &pole) { return analysis::distance_inside(pole) < 0.0; }

void require_response(const DrawnFilter &filter, const std::string &subject) {
  const auto &poles = filter.roots.poles;
  if (poles.empty())
    throw Refusal(fmt::format(
        "{} has neither zeros and poles nor sections to draw; design it with --zpk-output on",
        subject));
  if (!is_finite(filter))
    throw Refusal(fmt::format("{} has numbers that are not finite: it has no response", subject));
  if (std::any_of(poles.begin(), poles.end(), is_on_circle))
    throw Refusal(fmt::format("{} has a pole on the unit circle: it has no response", subject));
}

double highest_level(const DrawnFilter &filter, Detail detail) {
  if (detail == Detail::live) return LiveLevels(filter, {}, LiveLevels::Purpose::peak).peak();
  const std::vector<analysis::Interval> all{{0.0, 1.0}};
  return filter.lift_db.value_or(0.0) + (filter.sections.empty()
                                             ? extremes(filter.roots, all).highest.db
                                             : extremes(filter.sections, all).highest.db);
}

std::vector<double> half_power_frequencies(const DrawnFilter &filter,
                                           const std::vector<double> &cutoffs, Detail detail) {
  // Two equal cutoffs have no band between them.
  if (cutoffs.size() == 2 && !(cutoffs[0] < cutoffs[1])) return {};
  const double reference = filter.peak_db - filter.lift_db.value_or(0.0);
  std::vector<double> found;
  if (detail == Detail::live)
    found = live_edges(LiveLevels(filter, cutoffs, LiveLevels::Purpose::crossings), filter.response,
                       cutoffs, filter.peak_db - analysis::half_power_db);
  else if (filter.sections.empty())
    found = half_power_points(filter.roots, filter.response, cutoffs, reference);
  else
    found = half_power_points(filter.sections, filter.response, cutoffs, reference);
  std::erase_if(found, [](double w) { return std::isnan(w); });
  for (double &w : found) w *= filter.nyquist();
  return found;
}

// A silent filter keeps its shape, whose level may be beyond the range of doubles.
DrawnFilter lifted(DrawnFilter silent, Detail detail) {
  silent.sections.clear();
  silent.roots.gain = 1.0;
  silent.lift_db = -highest_level(silent, detail);
  silent.peak_db = 0.0;
  return silent;
}

// All that does not depend on settings.
DrawnFilter with_peak(const designer::FilterForms &filter, const std::string &subject,
                      Detail detail) {
  DrawnFilter drawn{};
  drawn.samplerate = filter.samplerate;
  drawn.sections = filter.sections;
  drawn.roots = roots_of(filter).value_or(analysis::Roots{});
  require_response(drawn, subject);
  drawn.poles_outside = static_cast<std::size_t>(
      std::count_if(drawn.roots.poles.begin(), drawn.roots.poles.end(), is_outside));
  drawn.peak_db = highest_level(drawn, detail);
  if (!std::isfinite(drawn.peak_db)) drawn = lifted(std::move(drawn), detail);
  return drawn;
}

// The response that has such a passband.
designer::Response response_passing(bool at_dc, bool at_nyquist) {
  using designer::Response;
  if (at_dc) return at_nyquist ? Response::bandstop : Response::lowpass;
  return at_nyquist ? Response::highpass : Response::bandpass;
}

// At least the first and the last of all.
std::vector<double> outermost_crossings(const DrawnFilter &filter, double db, Detail detail) {
  const analysis::Interval all{0.0, 1.0};
  if (detail == Detail::live) {
    const LiveLevels levels(filter, {}, LiveLevels::Purpose::crossings);
    const auto first = levels.crossing(db, all, LiveLevels::Which::first);
    if (!first) return {};
    return {*first, levels.crossing(db, all, LiveLevels::Which::last).value_or(*first)};
  }
  const double unlifted = db - filter.lift_db.value_or(0.0);
  return filter.sections.empty() ? analysis::crossings(filter.roots, unlifted, all)
                                 : analysis::crossings(filter.sections, unlifted, all);
}

}  // namespace

double DrawnFilter::level_db(double w) const {
  return lift_db.value_or(0.0) +
         (sections.empty() ? analysis::level_db(roots, w) : analysis::level_db(sections, w));
}

std::vector<double> DrawnFilter::levels_db(const std::vector<double> &w) const {
  std::vector<double> levels =
      sections.empty() ? analysis::swept_levels(roots, w) : analysis::swept_levels(sections, w);
  for (double &level : levels) level += lift_db.value_or(0.0);
  return levels;
}

DrawnFilter drawn_filter(const designer::PublishedFilter &filter, const std::string &subject,
                         Detail detail) {
  DrawnFilter drawn = with_peak(filter, subject, detail);
  drawn.family = filter.family;
  drawn.response = filter.response;
  if (drawn.family == Family::chebyshev_1) drawn.ripple = filter.passband_ripple;
  if (drawn.family == Family::chebyshev_2) drawn.attenuation = filter.stopband_attenuation;
  const std::vector<double> cutoffs = filter.ascending_cutoffs();
  drawn.half_power = half_power_frequencies(drawn, cutoffs, detail);
  for (const double w : cutoffs) drawn.cutoffs.push_back(w * drawn.nyquist());
  return drawn;
}

DrawnFilter drawn_without_settings(const designer::FilterForms &filter, const std::string &subject,
                                   Detail detail) {
  const analysis::Roots roots = roots_of(filter).value_or(analysis::Roots{});
  if (roots.poles.empty() && roots.zeros.empty())
    throw Refusal(
        fmt::format("{} only multiplies by {:g}: it has no response to draw", subject, roots.gain));
  DrawnFilter drawn = with_peak(filter, subject, detail);
  const double half_power = drawn.peak_db - analysis::half_power_db;
  drawn.response =
      response_passing(drawn.level_db(0.0) >= half_power, drawn.level_db(1.0) >= half_power);
  const std::vector<double> found = outermost_crossings(drawn, half_power, detail);
  if (found.empty()) return drawn;
  const double lowest = found.front() * drawn.nyquist(), highest = found.back() * drawn.nyquist();
  switch (drawn.response) {
    case designer::Response::lowpass: drawn.half_power = {highest}; break;
    case designer::Response::highpass: drawn.half_power = {lowest}; break;
    case designer::Response::bandpass:
    case designer::Response::bandstop: drawn.half_power = {lowest, highest}; break;
  }
  return drawn;
}

}  // namespace pictures
