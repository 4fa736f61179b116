#include "pictures/frequency_text.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace pictures {
namespace {

// Digits that show the difference of neighbours with two of its own.
int digits_needed(const std::vector<double> &frequencies) {
  double most = 0.0;
  for (std::size_t i = 1; i < frequencies.size(); ++i)
    if (frequencies[i] > frequencies[i - 1])
      most = std::max(most, frequencies[i] / (frequencies[i] - frequencies[i - 1]));
  return most > 0.0 ? static_cast<int>(std::ceil(std::log10(most))) + 2 : 0;
}

std::string number(double hz, int digits) {
  if (!(hz > 0.0)) return "0";
  const int before_point = static_cast<int>(std::floor(std::log10(hz))) + 1;
  std::string text = fmt::format("{:.{}f}", hz, std::clamp(digits - before_point, 0, 15));
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return text;
}

}  // namespace

std::string frequencies_text(const std::vector<double> &frequencies, int digits) {
  constexpr int most_digits = 15;
  const int enough = std::min(std::max(digits, digits_needed(frequencies)), most_digits);
  std::string text;
  for (const double hz : frequencies) text += (text.empty() ? "" : " and ") + number(hz, enough);
  return text + " Hz";
}

}  // namespace pictures
