// The levels that a filter reaches, against those that were asked for.

#include <cmath>

#include <fmt/format.h>

#include "analysis/crossing.h"
#include "analysis/extremes.h"
#include "analysis/response.h"
#include "checks.h"
#include "remedies.h"
#include "text/quantities.h"
#include "tolerances.h"

namespace verdict {
namespace {

using designer::Family;
using designer::PublishedFilter;

// A level that was measured, and the one that was asked for.
struct Level {
  std::string what;
  double reached_db;
  double asked_db;

  bool is_met() const { return std::fabs(reached_db - asked_db) <= tolerance_db; }
};

struct Levels {
  std::vector<Level> list;
  std::string summary; /**< to say when all are met */
  text::Json measured = text::Json::object();
};

double hz(const PublishedFilter &filter, double w) { return w * filter.nyquist(); }

double reference(const PublishedFilter &filter) {
  return analysis::reference_frequency(filter.response, filter.cutoffs);
}

// At the reference frequency, where the prototype is at 0: the bottom of the ripple of a
// chebyshev-1 of even order.
Level reference_level(const FilterUnderTest &filter) {
  const PublishedFilter &published = filter.published;
  const double w = reference(published);
  return {"the level at " + published.hz_text(w), analysis::level_db(filter.forms.sections, w),
          analysis::reference_level(published.family, published.order, published.passband_ripple)};
}

std::string reference_text(const PublishedFilter &published, const Level &level) {
  return fmt::format("{} at {}", text::decibels(level.reached_db),
                     published.hz_text(reference(published)));
}

Levels butterworth(const FilterUnderTest &filter, const Level &top) {
  const PublishedFilter &published = filter.published;
  Levels levels;
  for (const double w : published.cutoffs)
    levels.list.push_back({"the level at " + published.hz_text(w),
                           analysis::level_db(filter.forms.sections, w), -analysis::half_power_db});
  levels.summary =
      fmt::format("{}, and -3.01 dB at the cutoff{}, as asked", reference_text(published, top),
                  published.has_two_cutoffs() ? "s" : "");
  return levels;
}

Levels chebyshev_1(const FilterUnderTest &filter) {
  const PublishedFilter &published = filter.published;
  const auto [highest, lowest] = analysis::extremes(
      filter.forms.sections, analysis::passband(published.response, published.cutoffs));
  Levels levels;
  levels.measured["passband_highest_db"] = highest.db;
  levels.measured["passband_lowest_db"] = lowest.db;
  levels.list = {{"the highest level of the passband", highest.db, 0.0},
                 {"the lowest level of the passband", lowest.db, -published.passband_ripple}};
  levels.summary = fmt::format("the passband lies between {} and {}, as asked",
                               text::decibels(lowest.db), text::decibels(highest.db));
  return levels;
}

Levels chebyshev_2(const FilterUnderTest &filter, const Level &top) {
  const PublishedFilter &published = filter.published;
  const double highest =
      analysis::extremes(filter.forms.sections,
                         analysis::stopband(published.response, published.cutoffs))
          .highest.db;
  Levels levels;
  levels.measured["stopband_highest_db"] = highest;
  levels.list = {{"the highest level of the stopband", highest, -published.stopband_attenuation}};
  levels.summary = fmt::format("{}, and at most {} in the stopband, as asked",
                               reference_text(published, top), text::decibels(highest));
  return levels;
}

Levels levels_of_family(const FilterUnderTest &filter, const Level &top) {
  switch (filter.published.family) {
    case Family::butterworth: return butterworth(filter, top);
    case Family::chebyshev_1: return chebyshev_1(filter);
    case Family::chebyshev_2: return chebyshev_2(filter, top);
  }
  return {};
}

// At the cutoffs of a butterworth, which goes without saying.
Findings half_power(const FilterUnderTest &filter) {
  const PublishedFilter &published = filter.published;
  Findings findings;
  text::Json list = text::Json::array();
  std::string text;
  for (const double w : analysis::half_power_points(filter.forms.sections, published.response,
                                                    published.cutoffs, 0.0)) {
    list.push_back(hz(published, w));
    if (!std::isnan(w)) text += (text.empty() ? "" : " and ") + published.hz_text(w);
  }
  findings.measured["half_power_hz"] = list;
  if (published.family != Family::butterworth && !text.empty())
    findings.fact("-3 dB", "at " + text);
  return findings;
}

}  // namespace

Findings check_levels(const FilterUnderTest &filter) {
  Findings findings;
  const Level top = reference_level(filter);
  findings.measured["reference_hz"] = hz(filter.published, reference(filter.published));
  findings.measured["reference_db"] = top.reached_db;

  Levels levels = levels_of_family(filter, top);
  findings.measured.update(levels.measured);
  levels.list.insert(levels.list.begin(), top);
  for (const Level &level : levels.list)
    if (!level.is_met())
      findings.problem(
          "levels",
          fmt::format("{} is {}, and should be {}", level.what, text::decibels(level.reached_db),
                      text::decibels(level.asked_db)),
          remedy_for_lost_digits(filter));
  if (findings.list.empty()) findings.fact("levels", levels.summary);
  findings += half_power(filter);
  return findings;
}

}  // namespace verdict
