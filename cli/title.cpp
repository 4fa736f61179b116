#include "title.h"

#include <algorithm>

#include <fmt/format.h>

namespace cli {
namespace {

using patchbay::Value;
using patchbay::Values;

Values setting(const Design &design, const std::string &name) {
  const auto found = std::find_if(design.settings.begin(), design.settings.end(),
                                  [&](const auto &entry) { return entry.first == name; });
  return found == design.settings.end() ? Values{} : found->second;
}

std::string word(const Design &design, const std::string &name) {
  const Values values = setting(design, name);
  return values.empty() ? "" : patchbay::to_text(values.front());
}

}  // namespace

std::string title(const Design &design) {
  const std::string topology = word(design, "topology");
  const std::string units = word(design, "units");
  Values cutoffs = setting(design, "frequency");
  if (!word(design, "response").starts_with("band") && cutoffs.size() > 1)
    cutoffs.resize(1);  // the one that is used
  std::string text =
      fmt::format("{} {} of order {}", topology, word(design, "response"), word(design, "order"));
  const char *separator = cutoffs.size() == 1 ? ", cutoff " : ", cutoffs ";
  for (const Value &cutoff : cutoffs) {
    text += separator + patchbay::to_text(cutoff);
    separator = " and ";
  }
  if (!cutoffs.empty())
    text += units == "hertz" ? " Hz" : units == "normalized" ? " of Nyquist" : " " + units;
  if (topology == "chebyshev-1") text += ", ripple " + word(design, "passband_ripple") + " dB";
  if (topology == "chebyshev-2")
    text += ", attenuation " + word(design, "stopband_attenuation") + " dB";
  return text + fmt::format(", at {} Hz", design.samplerate);
}

}  // namespace cli
