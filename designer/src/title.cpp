#include "designer/title.h"

#include <fmt/format.h>

#include "designer/cutoffs.h"
#include "designer/names.h"

namespace designer {

std::string title(const Design &design) {
  const Settings &settings = design.settings;
  const std::string topology = settings.text("topology");
  const std::string response = settings.text("response");
  std::string text = fmt::format("{} {} of order {}", topology, response, settings.text("order"));

  const std::vector<Cutoff> cutoffs = cutoffs_in(settings, design.samplerate);
  text += (cutoffs.size() == 1 ? ", cutoff " : ", cutoffs ") + used_text(cutoffs);

  const auto family = family_named(topology);
  if (family == Family::chebyshev_1)
    text += fmt::format(", ripple {} dB", settings.number("passband_ripple"));
  if (family == Family::chebyshev_2)
    text += fmt::format(", attenuation {} dB", settings.number("stopband_attenuation"));
  return text + fmt::format(", at {} Hz", design.samplerate);
}

}  // namespace designer
