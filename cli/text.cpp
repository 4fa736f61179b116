#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "present.h"

namespace cli {
namespace {

using patchbay::Value;
using patchbay::Values;

constexpr char section_equation[] =
    "H(z) = product of (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2)";
constexpr char transfer_equation[] = "H(z) = sum of numerator[k] z^-k / sum of denominator[k] z^-k";
constexpr int key_width = 13;

double number(const Value &value) {
  const auto *integer = std::get_if<t_long>(&value);
  return integer != nullptr ? static_cast<double>(*integer) : std::get<double>(value);
}

const Values &setting(const Design &design, const std::string &name) {
  const auto found = std::find_if(design.settings.begin(), design.settings.end(),
                                  [&](const auto &entry) { return entry.first == name; });
  return found->second;
}

std::string word(const Design &design, const std::string &name) {
  const Values &values = setting(design, name);
  return values.empty() ? "" : patchbay::to_text(values.front());
}

std::string title(const Design &design) {
  const std::string topology = word(design, "topology");
  const std::string units = word(design, "units");
  std::string text = fmt::format("{} {} of order {}, cutoff", topology, word(design, "response"),
                                 word(design, "order"));
  const char *separator = " ";
  for (const Value &cutoff : setting(design, "frequency")) {
    text += separator + patchbay::to_text(cutoff);
    separator = " and ";
  }
  text += units == "hertz" ? " Hz" : units == "normalized" ? " of Nyquist" : " " + units;
  if (topology == "chebyshev-1") text += ", ripple " + word(design, "passband_ripple") + " dB";
  if (topology == "chebyshev-2")
    text += ", attenuation " + word(design, "stopband_attenuation") + " dB";
  return text + fmt::format(", at {} Hz", design.samplerate);
}

std::vector<std::string> complex_lines(const Values &values) {
  std::vector<std::string> lines;
  for (std::size_t i = 0; i + 1 < values.size(); i += 2) {
    const double real = number(values[i]);
    const double imag = number(values[i + 1]);
    lines.push_back(imag == 0.0 ? fmt::format("{:>24}", real)
                                : fmt::format("{:>24} {} {}i", real, std::signbit(imag) ? '-' : '+',
                                              std::abs(imag)));
  }
  return lines;
}

std::vector<std::string> section_lines(const Values &values) {
  std::vector<std::string> lines{section_equation, fmt::format("{:>24} {:>24} {:>24} {:>24} {:>24}",
                                                               "b0", "b1", "b2", "a1", "a2")};
  for (std::size_t i = 0; i + 4 < values.size(); i += 5)
    lines.push_back(fmt::format("{:>24} {:>24} {:>24} {:>24} {:>24}", number(values[i]),
                                number(values[i + 1]), number(values[i + 2]), number(values[i + 3]),
                                number(values[i + 4])));
  return lines;
}

std::vector<std::string> lines_of(const std::string &key, const patchbay::Entry &entry) {
  if (const auto *text = std::get_if<std::string>(&entry)) return {*text};
  if (const auto *single = std::get_if<double>(&entry)) return {fmt::format("{}", *single)};
  const auto &values = std::get<Values>(entry);
  if (values.empty()) return {"(none)"};
  if (key == "zeroes" || key == "poles") return complex_lines(values);
  if (key == "cascade") return section_lines(values);
  std::vector<std::string> lines;
  if (key == "denominator") lines.emplace_back(transfer_equation);
  for (const Value &value : values) lines.push_back(fmt::format("{:>24}", number(value)));
  return lines;
}

}  // namespace

std::string to_text_page(const Design &design) {
  std::string page = title(design) + "\n\n";
  for (const auto &[key, entry] : design.dictionary) {
    std::string label = key;
    for (const std::string &line : lines_of(key, entry)) {
      page += fmt::format("{:<{}}{}\n", label, key_width, line);
      label.clear();
    }
  }
  return page;
}

}  // namespace cli
