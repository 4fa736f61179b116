// What the settings of a filter mean, and what became of those that were asked for.

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "checks.h"
#include "cutoff_findings.h"
#include "cutoff_remedies.h"

namespace verdict {
namespace {

using designer::Family;
using designer::name_of;
using designer::Value;

std::string option(std::string name) {
  std::replace(name.begin(), name.end(), '_', '-');
  return "--" + name;
}

Findings unused_samplerate(const FilterUnderTest &filter) {
  const double rate = filter.published.samplerate;
  Findings findings;
  const designer::Values *given = filter.requested.find("samplerate");
  const auto asked = given != nullptr ? designer::number_in(given->front()) : std::nullopt;
  // 0 stands for the rate of the audio.
  if (asked && *asked != 0.0 && *asked != rate)
    findings.problem("sample rate",
                     fmt::format("{} Hz was asked for, but {} Hz is used: rates are whole numbers "
                                 "from 1",
                                 patchbay::to_text(given->front()), rate),
                     {fmt::format("--samplerate {}, or cutoffs as fractions of the Nyquist "
                                  "frequency, --units normalized, which are right at any rate",
                                  rate),
                      {{{"samplerate", {rate}}}}});
  return findings;
}

Findings clipped_settings(const FilterUnderTest &filter) {
  constexpr std::array names{"order", "passband_ripple", "stopband_attenuation"};
  Findings findings;
  for (const auto &[name, values] : filter.requested) {
    if (std::find(names.begin(), names.end(), name) == names.end()) continue;
    const Value &asked = values.front();
    const auto number = designer::number_in(asked);
    if (!number || *number == filter.used.number(name)) continue;
    const std::string used = filter.used.text(name);
    findings.problem(
        name, fmt::format("{} was asked for, but {} is used", patchbay::to_text(asked), used),
        {fmt::format("{} {}; 'veltane design --help' says what is allowed", option(name), used),
         {{{name, {filter.used.number(name)}}}}});
  }
  return findings;
}

Findings unused_cutoff(const FilterUnderTest &filter) {
  Findings findings;
  const designer::Values *cutoffs = filter.requested.find("frequency");
  if (cutoffs != nullptr && cutoffs->size() == 2 && !filter.published.has_two_cutoffs())
    findings.note("cutoff",
                  fmt::format("a {} has only one: {} is not used",
                              name_of(filter.published.response), patchbay::to_text((*cutoffs)[1])),
                  {"for two, --response bandpass or bandstop", band_responses(*cutoffs)});
  return findings;
}

// @param family  the one that uses it
Findings unused_level(const FilterUnderTest &filter, const char *name, Family family) {
  Findings findings;
  if (filter.typed.contains(name) && filter.published.family != family)
    findings.note(name, fmt::format("a {} does not use it", name_of(filter.published.family)),
                  {fmt::format("to use it, --topology {}", name_of(family)),
                   {{{"topology", {std::string(name_of(family))}}}}});
  return findings;
}

Findings published_forms(const FilterUnderTest &filter) {
  const bool roots = filter.published.roots.has_value();
  const bool sections = !filter.published.sections.empty();
  const bool transfer = filter.publishes_transfer();
  Findings findings;
  findings.measured["published"] = {
      {"roots", roots}, {"sections", sections}, {"transfer_function", transfer}};
  const Value on = std::string("on");
  std::vector<std::string> forms;
  if (roots) forms.emplace_back("zeros, poles and gain");
  if (sections) forms.emplace_back("sections");
  if (transfer) forms.emplace_back("transfer function");
  if (!forms.empty()) findings.fact("published", fmt::format("{}", fmt::join(forms, "; ")));
  if (!sections && filter.used.number("sos_output") != 0)
    findings.problem("published",
                     "the sections were asked for but are empty: they are made from the published "
                     "zeros and poles, which are switched off",
                     {"--zpk-output on", {{{"zpk_output", {on}}}}});
  else if (forms.empty())
    findings.problem(
        "published", "no form of the filter is published",
        {"--zpk-output on --sos-output on", {{{"zpk_output", {on}}, {"sos_output", {on}}}}});
  return findings;
}

}  // namespace

Findings check_settings(const FilterUnderTest &filter) {
  Findings findings = unused_samplerate(filter);
  findings += cutoff_findings(filter);
  findings += clipped_settings(filter);
  findings += unused_cutoff(filter);
  findings += unused_level(filter, "passband_ripple", Family::chebyshev_1);
  findings += unused_level(filter, "stopband_attenuation", Family::chebyshev_2);
  findings += published_forms(filter);
  return findings;
}

}  // namespace verdict
