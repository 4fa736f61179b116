#include "plot/figure_options.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include <fmt/format.h>

#include "designer/refusal.h"
#include "pictures/ranges.h"

namespace cli {
namespace {

constexpr int least_width = 500, most_width = 4000, usual_width = 1000;
constexpr double lowest_floor = -1e5;
constexpr double lowest_frequency = 1e-12, highest_frequency = 1e12;

double number(const Option &option, const std::string &word) {
  const char *end = word.c_str() + word.size();
  char *stopped = nullptr;
  const double value = std::strtod(word.c_str(), &stopped);
  if (word.empty() || stopped != end || !std::isfinite(value))
    throw designer::Refusal(fmt::format("{} takes numbers, not '{}'", option.name(), word));
  return value;
}

}  // namespace

int width_in(const Arguments &arguments) {
  const auto word = arguments.value(width_option);
  if (!word) return usual_width;
  const double width = number(width_option, *word);
  if (width != std::floor(width) || width < least_width || width > most_width)
    throw designer::Refusal(
        fmt::format("--width takes whole numbers of pixels from {} to {}, not "
                    "'{}'",
                    least_width, most_width, *word));
  return static_cast<int>(width);
}

pictures::Scale scale_in(const Arguments &arguments) {
  return arguments.given(linear_axis_option) ? pictures::Scale::linear
                                             : pictures::Scale::logarithmic;
}

std::optional<pictures::Axis> frequencies_in(const Arguments &arguments) {
  const Words words = arguments.values(range_option);
  if (words.empty()) return std::nullopt;
  if (words.size() != 2)
    throw designer::Refusal(
        "--range takes two frequencies in Hz, the lowest and the highest, and one was given");
  const double low = number(range_option, words[0]);
  const double high = number(range_option, words[1]);
  const pictures::Scale scale = scale_in(arguments);
  const bool linear = scale == pictures::Scale::linear;
  if (!(low >= (linear ? 0.0 : lowest_frequency) && low * 1.0001 < high &&
        high <= highest_frequency && high >= lowest_frequency))
    throw designer::Refusal(
        fmt::format("--range takes two frequencies in Hz{}, the lower one first, not '{}' and '{}'",
                    linear ? "" : " above 0", words[0], words[1]));
  return pictures::Axis{low, high, scale};
}

std::optional<double> floor_in(const Arguments &arguments,
                               const std::vector<pictures::DrawnFilter> &filters) {
  const auto word = arguments.value(floor_option);
  if (!word) return std::nullopt;
  const double floor = number(floor_option, *word);
  const double peak = pictures::highest_peak(filters);
  if (!(floor < peak - 1.0 && floor > lowest_floor))
    throw designer::Refusal(fmt::format(
        "--floor takes a level in dB from -100000 to 1 dB below the peak, which is {:.4g}, not "
        "'{}'",
        peak, *word));
  return floor;
}

}  // namespace cli
