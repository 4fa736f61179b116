#include "response/response_options.h"

#include <array>
#include <cmath>

#include <fmt/format.h>

#include "args/option_words.h"
#include "designer/refusal.h"
#include "designer/settings.h"

namespace cli {
namespace {

constexpr double usual_points = 200.0, most_points = 1e6;
constexpr double usual_length = 100.0, most_length = 1e7;
constexpr double usual_decades = 1000.0;  // from the highest frequency to the lowest

double frequency(const Option &option, const std::string &text, double nyquist) {
  const auto value = designer::number_in(text);
  if (!value || !std::isfinite(*value))
    throw designer::Refusal(
        fmt::format("{} takes frequencies in Hz, not '{}'", option.name(), text));
  if (!(*value >= 0.0 && *value <= nyquist))
    throw designer::Refusal(
        fmt::format("{} {}: frequencies lie from 0 to half the sample rate, {} Hz", option.name(),
                    text, nyquist));
  return *value;
}

std::size_t count(const Arguments &arguments, const Option &option, double usual, double least,
                  double most) {
  const auto text = arguments.value(option);
  const double value = text ? designer::number_in(*text).value_or(-1.0) : usual;
  if (!(value >= least && value <= most && value == std::floor(value)))
    throw designer::Refusal(fmt::format("{} takes a whole number from {:.0f} to {:.0f}, not '{}'",
                                        option.name(), least, most, *text));
  return static_cast<std::size_t>(value);
}

}  // namespace

From from_in(const Arguments &arguments) {
  From from;
  for (const std::string &word : arguments.values(low_or_file_option)) {
    const std::string number = in_own_number(word, Unit::hertz);
    const bool is_number = designer::number_in(number).has_value();
    std::optional<std::string> &place = is_number ? from.low : from.file;
    if (place)
      throw designer::Refusal(fmt::format(
          "--from takes one frequency and one file at most, not '{}' and '{}'", *place, word));
    place = is_number ? number : word;
  }
  return from;
}

std::vector<double> response_frequencies(const Arguments &arguments, double nyquist) {
  std::vector<double> frequencies;
  const auto low_text = from_in(arguments).low;
  if (arguments.given(at_option)) {
    for (const Option *option : {&high_option, &points_option, &linear_option})
      if (arguments.given(*option) || low_text)
        throw designer::Refusal(
            "--at takes the place of a range: omit --from HZ, --to, --points "
            "and --linear");
    for (const std::string &text : arguments.values(at_option))
      frequencies.push_back(frequency(at_option, text, nyquist));
    return frequencies;
  }
  const auto high_text = arguments.value(high_option);
  const bool linear = arguments.given(linear_option);
  const double high = high_text ? frequency(high_option, *high_text, nyquist) : nyquist;
  const double low = low_text ? frequency(low_or_file_option, *low_text, nyquist)
                     : linear ? 0.0
                              : high / usual_decades;
  const std::size_t points = count(arguments, points_option, usual_points, 2.0, most_points);
  if (!(low < high))
    throw designer::Refusal(
        fmt::format("--from {} and --to {}: the lower frequency comes first", low, high));
  if (!linear && low == 0.0)
    throw designer::Refusal("equal ratios begin above 0 Hz; --linear may begin there");
  for (std::size_t i = 0; i + 1 < points; ++i) {
    const double part = static_cast<double>(i) / static_cast<double>(points - 1);
    frequencies.push_back(linear ? low + part * (high - low) : low * std::pow(high / low, part));
  }
  frequencies.push_back(high);
  return frequencies;
}

std::size_t length_in(const Arguments &arguments) {
  return count(arguments, length_option, usual_length, 1.0, most_length);
}

void check_kind(const Arguments &arguments) {
  const bool over_time = arguments.given(impulse_option) || arguments.given(step_option);
  if (!over_time) {
    if (arguments.given(length_option))
      throw designer::Refusal("--length belongs to --impulse and --step");
    return;
  }
  for (const Option *option :
       {&high_option, &points_option, &linear_option, &at_option, &wrapped_option})
    if (arguments.given(*option) || from_in(arguments).low)
      throw designer::Refusal("--impulse and --step take --length, and no frequencies");
}

}  // namespace cli
