#include "cutoff_remedies.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "designer/cutoffs.h"
#include "designer/names.h"

namespace verdict {
namespace {

using designer::Cutoff;
using designer::Settings;
using designer::Values;

// Beyond 32 times the rate another unit or a slip of the pen is likelier.
constexpr int most_doublings = 5;

// Whether no cutoff is clipped if a filter gets these settings as well, and two leave a band.
bool fits(const FilterUnderTest &filter, const Settings &remedy) {
  Settings settings = filter.used;
  for (const auto &[name, values] : remedy) settings.set(name, values);
  const double rate =
      remedy.has("samplerate") ? remedy.number("samplerate") : filter.published.samplerate;
  const std::vector<Cutoff> cutoffs = designer::cutoffs_in(settings, rate);
  return std::none_of(cutoffs.begin(), cutoffs.end(),
                      [](const Cutoff &cutoff) { return cutoff.is_clipped(); }) &&
         (cutoffs.size() < 2 || cutoffs[0].used < cutoffs[1].used);
}

Settings nearest(const FilterUnderTest &filter) {
  Values values = *filter.used.find("frequency");
  const std::vector<Cutoff> cutoffs =
      designer::cutoffs_in(filter.used, filter.published.samplerate);
  for (std::size_t i = 0; i < cutoffs.size(); ++i)
    if (cutoffs[i].is_clipped()) values[i] = designer::number_in(cutoffs[i].used_text()).value();
  return {{"frequency", values}};
}

Settings other_unit(const FilterUnderTest &filter) {
  const bool hertz = filter.published.units == designer::Units::hertz;
  return {{"units", {std::string(hertz ? "normalized" : "hertz")}}};
}

// None if the cutoffs are too low.
std::optional<Settings> higher_rate(const FilterUnderTest &filter) {
  double rate = filter.published.samplerate;
  for (int i = 0; i < most_doublings; ++i) {
    rate *= 2;
    Settings remedy{{"samplerate", {rate}}};
    if (fits(filter, remedy)) return remedy;
  }
  return std::nullopt;
}

}  // namespace

std::vector<Settings> cutoffs_in_range(const FilterUnderTest &filter) {
  std::vector<Settings> remedies;
  for (const Settings &remedy : {other_unit(filter), nearest(filter)})
    if (fits(filter, remedy)) remedies.push_back(remedy);
  if (const auto remedy = higher_rate(filter)) remedies.push_back(*remedy);
  return remedies;
}

std::vector<Settings> cutoffs_in_order(const FilterUnderTest &filter) {
  const std::vector<double> &given = filter.published.frequency;
  if (!filter.published.has_no_band() || !(given[0] > given[1])) return {};
  return {{{"frequency", {given[1], given[0]}}}};
}

std::vector<Settings> band_responses(const Values &cutoffs) {
  const auto first = designer::number_in(cutoffs[0]);
  const auto second = designer::number_in(cutoffs[1]);
  if (!first || !second || *first == *second) return {};
  std::vector<Settings> remedies;
  for (const auto response : {designer::Response::bandpass, designer::Response::bandstop})
    remedies.push_back({{"response", {std::string(designer::name_of(response))}},
                        {"frequency", {std::min(*first, *second), std::max(*first, *second)}}});
  return remedies;
}

}  // namespace verdict
