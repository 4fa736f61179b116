#include "args/settings_options.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

#include "args/saved_file.h"
#include "args/shared_options.h"
#include "designer/refusal.h"

namespace cli {
namespace {

constexpr std::array<std::string_view, 3> topologies{"butterworth", "chebyshev-1", "chebyshev-2"};
constexpr std::array<std::string_view, 4> responses{"lowpass", "highpass", "bandpass", "bandstop"};
constexpr std::array<std::string_view, 3> units{"hertz", "normalized", "radians"};
constexpr std::array<std::string_view, 2> switches{"on", "off"};

constexpr std::array options{
    Option{.names = "--name", .value = "WORD", .help = "Dictionary Name [a free one]"},
    Option{.names = "--topology",
           .value = "WORD",
           .help = "Topology: butterworth, chebyshev-1, chebyshev-2 [chebyshev-2]",
           .choices = topologies},
    Option{.names = "--response",
           .value = "WORD",
           .help = "Response: lowpass, highpass, bandpass, bandstop [lowpass]",
           .choices = responses},
    Option{.names = "--units",
           .value = "WORD",
           .help =
               "Frequency Units: hertz, normalized, radians (normalized 1 is half the sample rate, "
               "radians are not supported) [hertz]",
           .choices = units},
    Option{.names = "--samplerate,--fs",
           .value = "NUMBER",
           .help = "Sample Rate in Hz, such as 44100 or 44.1k; 0 for that of the audio, 48000 [0]",
           .unit = Unit::hertz},
    Option{.names = "--order", .value = "NUMBER", .help = "Order: 2 to 200 [5]"},
    Option{.names = "--frequency,--cutoff",
           .value = "NUMBER [NUMBER]",
           .help = "Cutoff Frequencies in --units, such as 3000 or 3k: one, or two for a band "
                   "response [3000]",
           .most = 2,
           .unit = Unit::hertz},
    Option{.names = "--passband-ripple,--ripple",
           .value = "NUMBER",
           .help = "Chebyshev-I Passband Ripple: 0.1 to 48 dB [0.5]",
           .unit = Unit::decibels},
    Option{.names = "--stopband-attenuation,--attenuation",
           .value = "NUMBER",
           .help = "Chebyshev-II Stopband Attenuation: 6 to 240 dB [96]",
           .unit = Unit::decibels},
    Option{.names = "--zpk-output",
           .value = "on|off",
           .help = "Zeroes, Poles, and Gain [on]",
           .choices = switches},
    Option{.names = "--sos-output",
           .value = "on|off",
           .help = "Second-Order Section Coefficients [on]",
           .choices = switches},
    Option{.names = "--tf-output",
           .value = "on|off",
           .help = "Transfer Function Coefficients [off]",
           .choices = switches}};

constexpr auto table = [] {
  std::array<const Option *, options.size()> pointers{};
  for (std::size_t i = 0; i < options.size(); ++i) pointers[i] = &options[i];
  return pointers;
}();

}  // namespace

Options settings_options() { return table; }

std::string attribute_of(const Option &option) {
  std::string name(option.name().substr(2));
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

designer::Settings typed_settings(const Arguments &arguments) {
  designer::Settings settings;
  for (const Option *option : settings_options()) {
    const Words words = arguments.values(*option);
    if (!words.empty())
      settings.set(attribute_of(*option), designer::Values(words.begin(), words.end()));
  }
  return settings;
}

designer::Settings requested_settings(const Arguments &arguments) {
  return requested_settings(arguments, arguments.value(from_option));
}

designer::Settings requested_settings(const Arguments &arguments,
                                      const std::optional<std::string> &file) {
  designer::Settings saved;
  if (file) saved = read_saved_design(*file).settings;
  for (const designer::Setting &setting : saved)
    if (std::none_of(table.begin(), table.end(),
                     [&](const Option *option) { return attribute_of(*option) == setting.name; }))
      throw designer::Refusal(fmt::format("there is no setting '{}'", setting.name));
  const designer::Settings typed = typed_settings(arguments);
  designer::Settings all;
  for (const Option *option : settings_options()) {
    const std::string name = attribute_of(*option);
    if (const designer::Values *values = typed.find(name))
      all.set(name, *values);
    else if (const designer::Values *kept = saved.find(name))
      all.set(name, *kept);
  }
  return all;
}

}  // namespace cli
