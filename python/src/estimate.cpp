// The filters that meet a demand.

#include "analysis/estimate.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <fmt/format.h>

#include "designer/candidates.h"
#include "designer/refusal.h"
#include "filter.h"
#include "process_designer.h"

namespace python {
namespace {

// Beyond these the formulas' powers of ten leave the doubles.
constexpr double least_ripple = 1e-6;
constexpr double most_attenuation = 1000.0;
constexpr double most_samplerate = 1e9;

void check(double ripple, double attenuation, double samplerate) {
  if (!(ripple >= least_ripple))
    throw designer::Refusal(fmt::format("ripple is at least {} dB, not {}", least_ripple, ripple));
  if (!(attenuation <= most_attenuation))
    throw designer::Refusal(
        fmt::format("attenuation is at most {} dB, not {}", most_attenuation, attenuation));
  if (!(samplerate >= 1 && samplerate <= most_samplerate && samplerate == std::floor(samplerate)))
    throw designer::Refusal(fmt::format("fs is a whole number of Hz from 1 to {}, not {}",
                                        most_samplerate, samplerate));
}

std::vector<designer::Family> families(const std::optional<std::string> &topology) {
  if (!topology) return {designer::all_families.begin(), designer::all_families.end()};
  if (const auto one = designer::family_named(*topology)) return {*one};
  std::array<std::string_view, designer::all_families.size()> names;
  std::transform(designer::all_families.begin(), designer::all_families.end(), names.begin(),
                 [](designer::Family family) { return designer::name_of(family); });
  throw designer::Refusal(
      fmt::format("topology cannot be '{}'; it is one of {}", *topology, fmt::join(names, ", ")));
}

}  // namespace

py::list estimated(const std::vector<double> &passband, const std::vector<double> &stopband,
                   double ripple, double attenuation, double samplerate,
                   const std::optional<std::string> &topology) {
  check(ripple, attenuation, samplerate);
  const designer::RatedDemand demand = designer::rated({passband, stopband, ripple, attenuation},
                                                       samplerate, designer::Units::hertz);
  designer::Designer &designer = process_designer();
  const std::vector<designer::Candidate> found =
      designer::candidates(designer, demand, families(topology));
  const designer::Candidate *const best = designer::recommended(found);
  py::list list;
  for (const designer::Candidate &candidate : found) {
    const bool possible = candidate.impossible.empty();
    designer::Settings held;
    if (possible) {
      const designer::Settings all = designer.accepted(candidate.settings).settings;
      for (const auto &[name, values] : candidate.settings) held.set(name, *all.find(name));
    }
    list.append(py::make_tuple(std::string(designer::name_of(candidate.family)),
                               std::string(designer::name_of(demand.response)), candidate.order,
                               candidate.poles, candidate.cutoffs, candidate.ripple,
                               candidate.attenuation, candidate.noise_db, &candidate == best,
                               candidate.impossible, settings_dict(held)));
  }
  return list;
}

}  // namespace python
