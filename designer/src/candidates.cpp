#include "designer/candidates.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "analysis/band.h"
#include "analysis/extremes.h"
#include "analysis/noise.h"
#include "analysis/stability.h"
#include "designer/published_filter.h"
#include "designer/refusal.h"

namespace designer {
namespace {

// What rounding leaves of levels, and what ten digits leave of a cutoff.
constexpr double tolerance_db = 1e-4;

struct Limits {
  Range order, ripple, attenuation;
};

// Why a family cannot be designed with these levels.
std::string levels_out_of_range(Family family, const analysis::Demand &demand,
                                const Limits &limits) {
  if (family == Family::chebyshev_1 && demand.ripple < limits.ripple.lowest)
    return fmt::format("its ripple is {} dB or more", limits.ripple.lowest);
  if (family == Family::chebyshev_2 && demand.attenuation > limits.attenuation.highest)
    return fmt::format("its attenuation is {} dB or less", limits.attenuation.highest);
  return "";
}

// Levels that a family cannot have and that ask for less than one that it can.
analysis::Demand within_levels(Family family, analysis::Demand demand, const Limits &limits) {
  if (family == Family::chebyshev_1) demand.ripple = std::min(demand.ripple, limits.ripple.highest);
  if (family == Family::chebyshev_2)
    demand.attenuation = std::max(demand.attenuation, limits.attenuation.lowest);
  return demand;
}

Settings settings_of(const RatedDemand &rated, const Candidate &candidate,
                     const analysis::Demand &levels) {
  const auto text = [](std::string_view word) { return Values{std::string(word)}; };
  Values cutoffs;
  for (const double cutoff : candidate.cutoffs)
    cutoffs.emplace_back(fmt::format("{:.10g}", cutoff));
  Settings settings{{"topology", text(name_of(candidate.family))},
                    {"response", text(name_of(rated.response))},
                    {"order", text(fmt::format("{}", candidate.order))},
                    {"frequency", cutoffs},
                    {"samplerate", text(fmt::format("{:.0f}", rated.samplerate))}};
  if (rated.units == Units::normalized) settings.set("units", text("normalized"));
  if (candidate.family == Family::chebyshev_1)
    settings.set("passband_ripple", text(fmt::format("{}", levels.ripple)));
  if (candidate.family == Family::chebyshev_2)
    settings.set("stopband_attenuation", text(fmt::format("{}", levels.attenuation)));
  return settings;
}

// Designs a candidate, and measures what it reaches.
Candidate measured(Designer &designer, const RatedDemand &rated, Candidate candidate) {
  const PublishedFilter filter = published_filter(designer.design(candidate.settings));
  const double gain = filter.roots ? filter.roots->gain : 0.0;
  candidate.poles = filter.roots ? filter.roots->poles.size() : 0;
  if (!analysis::stability(filter.sections).stable ||
      !(std::fabs(gain) >= std::numeric_limits<double>::min())) {
    candidate.impossible = fmt::format(
        "order {} would meet it, but its gain is too small for a double", candidate.order);
    return candidate;
  }
  const auto passband = analysis::passband(rated.response, rated.demand.passband);
  const auto stopband = analysis::stopband(rated.response, rated.demand.stopband);
  candidate.ripple = -analysis::extremes(filter.sections, passband).lowest.db;
  candidate.attenuation = -analysis::extremes(filter.sections, stopband).highest.db;
  candidate.impossible = shortfall(candidate, rated.demand);
  candidate.noise_db = analysis::noise(filter.sections, analysis::Structure::direct_2_transposed,
                                       analysis::Arithmetic::doubles)
                           .worst_db();
  return candidate;
}

Candidate candidate(Designer &designer, const RatedDemand &rated, const Limits &limits,
                    Family family) {
  Candidate found{};
  found.family = family;
  found.exact_order = std::nan("");
  found.impossible = levels_out_of_range(family, rated.demand, limits);
  if (!found.impossible.empty()) return found;
  const analysis::Demand demand = within_levels(family, rated.demand, limits);
  analysis::Estimate estimate;
  try {
    estimate = analysis::least_order(family, demand);
  } catch (const std::invalid_argument &error) {
    found.impossible = error.what();
    return found;
  }
  found.exact_order = estimate.exact_order;
  found.order = std::max(estimate.order, static_cast<std::size_t>(limits.order.lowest));
  if (static_cast<double>(found.order) > limits.order.highest) {
    found.impossible =
        fmt::format("it takes order {}; the highest is {}", found.order, limits.order.highest);
    return found;
  }
  estimate = analysis::with_order(family, demand, found.order);
  // As 1 / (1 / nyquist): it rounds as the cutoffs always have.
  const double unit = 1 / rated.nyquist();
  for (const double cutoff : estimate.cutoffs) {
    found.cutoffs.push_back(cutoff / unit);
    if (cutoff < cutoff_range.lowest || cutoff > cutoff_range.highest)
      found.impossible = fmt::format(
          "order {} meets it with a cutoff of {:.6g} of the Nyquist frequency; cutoffs lie between "
          "{} and {}",
          found.order, cutoff, cutoff_range.lowest, cutoff_range.highest);
  }
  if (!found.impossible.empty()) return found;
  found.settings = settings_of(rated, found, demand);
  return measured(designer, rated, std::move(found));
}

}  // namespace

RatedDemand rated(analysis::Demand demand, double samplerate, Units units) {
  RatedDemand made{std::move(demand), {}, samplerate, units};
  for (std::vector<double> *edges : {&made.demand.passband, &made.demand.stopband})
    for (double &edge : *edges) edge /= made.nyquist();
  try {
    made.response = analysis::demanded_band(made.demand);
  } catch (const std::invalid_argument &wrong) {
    throw Refusal(wrong.what());
  }
  return made;
}

const Candidate *recommended(const std::vector<Candidate> &candidates) {
  const auto rank = [](const Candidate &one) {
    return std::tuple(!one.impossible.empty(), one.is_noisy(), one.poles, one.noise_db);
  };
  const auto best =
      std::min_element(candidates.begin(), candidates.end(),
                       [&](const Candidate &x, const Candidate &y) { return rank(x) < rank(y); });
  return best == candidates.end() || !best->impossible.empty() ? nullptr : &*best;
}

std::string shortfall(const Candidate &candidate, const analysis::Demand &demand) {
  if (candidate.ripple <= demand.ripple + tolerance_db &&
      candidate.attenuation >= demand.attenuation - tolerance_db)
    return "";
  return fmt::format(
      "order {} should meet it, but in double precision it loses {:.6g} dB in the passband and "
      "{:.6g} dB in the stopband",
      candidate.order, candidate.ripple, candidate.attenuation);
}

std::vector<Candidate> candidates(Designer &designer, const RatedDemand &demand,
                                  const std::vector<Family> &families) {
  const Limits limits{designer.range("order"), designer.range("passband_ripple"),
                      designer.range("stopband_attenuation")};
  std::vector<Candidate> found;
  found.reserve(families.size());
  for (const Family family : families) found.push_back(candidate(designer, demand, limits, family));
  return found;
}

}  // namespace designer
