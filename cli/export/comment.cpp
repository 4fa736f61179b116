#include <algorithm>
#include <cctype>

#include <fmt/format.h>

#include "export/export.h"
#include "text/printable.h"

namespace cli {
namespace {

std::string with_point(std::string text) {
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  return text;
}

}  // namespace

std::string upper_case(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return text;
}

std::string double_text(double value) { return with_point(fmt::format("{:.17g}", value)); }

std::string float_text(double value) { return with_point(fmt::format("{:.9g}", value)); }

std::string coefficient_list(const analysis::Section &section, std::string (*text)(double),
                             bool negated) {
  const auto feedback = [&](double value) { return negated && value != 0.0 ? -value : value; };
  return fmt::format("{}, {}, {}, {}, {}", text(section.b0), text(section.b1), text(section.b2),
                     text(feedback(section.a1)), text(feedback(section.a2)));
}

Words subtracted_feedback() {
  return {"H(z) = product over the sections of",
          "       (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2)",
          "y[n] = b0 x[n] + b1 x[n-1] + b2 x[n-2] - a1 y[n-1] - a2 y[n-2]",
          "The feedback terms a1 and a2 are subtracted."};
}

Words added_feedback() {
  return {"H(z) = product over the sections of",
          "       (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2)",
          "y[n] = b0 x[n] + b1 x[n-1] + b2 x[n-2] + (-a1) y[n-1] + (-a2) y[n-2]",
          "The feedback terms are added: what stands here is -a1 and -a2."};
}

std::string comment(const Export &filter, const std::string &prefix, const Words &layout) {
  Words lines{filter.title, ""};
  lines.insert(lines.end(), layout.begin(), layout.end());
  lines.push_back(fmt::format(
      "Sample rate: {} Hz. At another one all frequencies move in proportion.", filter.samplerate));
  lines.insert(lines.end(), filter.gain.begin(), filter.gain.end());
  for (const std::string &remark : filter.remarks) lines.push_back("Note: " + remark + '.');
  lines.push_back("Made by: " + shell_line(filter.invocation));
  std::string text;
  for (const std::string &line : lines) {
    text += prefix + text::printable(line);
    text.erase(text.find_last_not_of(' ') + 1);
    text += '\n';
  }
  return text;
}

}  // namespace cli
