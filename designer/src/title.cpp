#include "designer/title.h"

#include <fmt/format.h>

#include "designer/names.h"

namespace designer {
namespace {

std::string unit_text(const std::string &units) {
  if (units == "hertz") return " Hz";
  return units == "normalized" ? " of Nyquist" : " " + units;
}

}  // namespace

std::string title(const Design &design) {
  const Settings &settings = design.settings;
  const std::string topology = settings.text("topology");
  const std::string response = settings.text("response");
  std::string text = fmt::format("{} {} of order {}", topology, response, settings.text("order"));

  std::vector<double> cutoffs = settings.numbers("frequency");
  const auto known = response_named(response);
  if (!(known && analysis::has_two_edges(*known))) cutoffs.resize(1);  // the one that is used
  const char *separator = cutoffs.size() == 1 ? ", cutoff " : ", cutoffs ";
  for (const double cutoff : cutoffs) {
    text += fmt::format("{}{}", separator, cutoff);
    separator = " and ";
  }
  text += unit_text(settings.text("units"));

  const auto family = family_named(topology);
  if (family == Family::chebyshev_1)
    text += fmt::format(", ripple {} dB", settings.number("passband_ripple"));
  if (family == Family::chebyshev_2)
    text += fmt::format(", attenuation {} dB", settings.number("stopband_attenuation"));
  return text + fmt::format(", at {} Hz", design.samplerate);
}

}  // namespace designer
