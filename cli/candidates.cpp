#include "candidates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <stdexcept>

#include <fmt/format.h>

#include "analysis/band.h"
#include "analysis/extremes.h"
#include "analysis/stability.h"
#include "published.h"
#include "subject.h"

namespace cli {
namespace {

using analysis::Family;

constexpr double lowest_cutoff = 0.0001;
constexpr double highest_cutoff = 0.9999;

// What rounding leaves of levels, and what ten digits leave of a cutoff.
constexpr double tolerance_db = 1e-4;

struct Name {
  Family family;
  const char *text;
};

constexpr std::array families{Name{Family::butterworth, "butterworth"},
                              Name{Family::chebyshev_1, "chebyshev-1"},
                              Name{Family::chebyshev_2, "chebyshev-2"}};

struct Range {
  double lowest, highest;
};

Range range_of(const patchbay::Host &host, const std::string &name) {
  for (const patchbay::AttributeInfo &attribute : host.attributes("veltane"))
    if (attribute.name == name && attribute.lowest && attribute.highest)
      return {*attribute.lowest, *attribute.highest};
  throw std::runtime_error(fmt::format("the module tells no range of '{}'", name));
}

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

Settings settings_of(const Requirements &requirements, const Candidate &candidate,
                     const analysis::Demand &demand) {
  patchbay::Values cutoffs;
  for (const double cutoff : candidate.cutoffs)
    cutoffs.emplace_back(fmt::format("{:.10g}", cutoff));
  Settings settings{{"topology", {candidate.family}},
                    {"response", {name_of(requirements.band)}},
                    {"order", {fmt::format("{}", candidate.order)}},
                    {"frequency", cutoffs},
                    {"samplerate", {fmt::format("{:.0f}", requirements.samplerate)}}};
  if (!requirements.hertz) settings.emplace_back("units", patchbay::Values{"normalized"});
  if (candidate.family == "chebyshev-1")
    settings.emplace_back("passband_ripple", patchbay::Values{fmt::format("{}", demand.ripple)});
  if (candidate.family == "chebyshev-2")
    settings.emplace_back("stopband_attenuation",
                          patchbay::Values{fmt::format("{}", demand.attenuation)});
  return settings;
}

Words command_of(const Settings &settings) {
  Words words{"veltane", "design"};
  for (const auto &[name, values] : settings) {
    words.push_back("--" + name);
    std::replace(words.back().begin(), words.back().end(), '_', '-');
    for (const patchbay::Value &value : values) words.push_back(patchbay::to_text(value));
  }
  return words;
}

void measure(patchbay::Host &host, const Requirements &requirements, const Settings &settings,
             Candidate &candidate) {
  const Published designed = published(run_design(host, settings));
  const analysis::Sections sections = sections_of(designed);
  candidate.poles = designed.poles.size();
  if (!analysis::stability(sections).stable ||
      !(std::fabs(designed.gain.value_or(0.0)) >= std::numeric_limits<double>::min())) {
    candidate.impossible =
        fmt::format("order {} does it, but its gain is too small for a number", candidate.order);
    return;
  }
  const analysis::Demand &demand = requirements.demand;
  candidate.ripple =
      -analysis::extremes(sections, analysis::passband(requirements.band, demand.passband))
           .lowest.db;
  candidate.attenuation =
      -analysis::extremes(sections, analysis::stopband(requirements.band, demand.stopband))
           .highest.db;
  candidate.impossible = shortfall(candidate, demand);
}

Candidate candidate(patchbay::Host &host, const Requirements &requirements, const Limits &limits,
                    const Name &name) {
  Candidate found;
  found.family = name.text;
  found.exact_order = std::nan("");
  found.impossible = levels_out_of_range(name.family, requirements.demand, limits);
  if (!found.impossible.empty()) return found;
  const analysis::Demand demand = within_levels(name.family, requirements.demand, limits);
  analysis::Estimate estimate;
  try {
    estimate = analysis::least_order(name.family, demand);
  } catch (const std::invalid_argument &error) {
    found.impossible = error.what();
    return found;
  }
  found.exact_order = estimate.exact_order;
  found.order = std::max(estimate.order, static_cast<std::size_t>(limits.order.lowest));
  if (static_cast<double>(found.order) > limits.order.highest) {
    found.impossible =
        fmt::format("it takes order {}, and {} is the highest", found.order, limits.order.highest);
    return found;
  }
  estimate = analysis::with_order(name.family, demand, found.order);
  for (const double cutoff : estimate.cutoffs) {
    found.cutoffs.push_back(cutoff / requirements.unit);
    if (cutoff < lowest_cutoff || cutoff > highest_cutoff)
      found.impossible = fmt::format(
          "its cutoff would be {:.6g} of the Nyquist frequency, and lies "
          "between {} and {}",
          cutoff, lowest_cutoff, highest_cutoff);
  }
  if (!found.impossible.empty()) return found;
  const Settings settings = settings_of(requirements, found, demand);
  found.command = command_of(settings);
  measure(host, requirements, settings, found);
  return found;
}

}  // namespace

std::string shortfall(const Candidate &candidate, const analysis::Demand &demand) {
  if (candidate.ripple <= demand.ripple + tolerance_db &&
      candidate.attenuation >= demand.attenuation - tolerance_db)
    return "";
  return fmt::format(
      "order {} should do it, but in double precision it loses {:.6g} dB in the passband and "
      "{:.6g} dB in the stopband",
      candidate.order, candidate.ripple, candidate.attenuation);
}

std::string name_of(analysis::Band band) {
  using analysis::Band;
  switch (band) {
    case Band::lowpass: return "lowpass";
    case Band::highpass: return "highpass";
    case Band::bandpass: return "bandpass";
    case Band::bandstop: break;
  }
  return "bandstop";
}

std::vector<Candidate> candidates(patchbay::Host &host, const Requirements &requirements) {
  const Limits limits{range_of(host, "order"), range_of(host, "passband_ripple"),
                      range_of(host, "stopband_attenuation")};
  std::vector<Candidate> found;
  for (const Name &name : families) found.push_back(candidate(host, requirements, limits, name));
  return found;
}

}  // namespace cli
