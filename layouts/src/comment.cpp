#include "comment.h"

#include <fmt/format.h>

#include "text/printable.h"
#include "text/shell.h"

namespace layouts {

std::vector<std::string> equation(Feedback feedback) {
  std::vector<std::string> lines{"H(z) = product over the sections of",
                                 "       (b0 + b1 z^-1 + b2 z^-2) / (1 + a1 z^-1 + a2 z^-2)"};
  if (feedback == Feedback::subtracted) {
    lines.emplace_back("y[n] = b0 x[n] + b1 x[n-1] + b2 x[n-2] - a1 y[n-1] - a2 y[n-2]");
    lines.emplace_back("The feedback terms a1 and a2 are subtracted.");
  } else {
    lines.emplace_back("y[n] = b0 x[n] + b1 x[n-1] + b2 x[n-2] + (-a1) y[n-1] + (-a2) y[n-2]");
    lines.emplace_back("The feedback terms are added: the file holds -a1 and -a2.");
  }
  return lines;
}

std::string comment(const ExportedFilter &filter, std::string_view prefix,
                    const std::vector<std::string> &usage) {
  std::vector<std::string> lines{filter.title, ""};
  lines.insert(lines.end(), usage.begin(), usage.end());
  lines.push_back(
      fmt::format("Sample rate: {} Hz. At any other rate, all frequencies scale in proportion.",
                  filter.samplerate));
  lines.insert(lines.end(), filter.scaling.begin(), filter.scaling.end());
  for (const std::string &remark : filter.remarks) lines.push_back("Note: " + remark + '.');
  lines.push_back("Made by: " + text::shell_line(filter.command));
  std::string out;
  for (const std::string &line : lines) {
    out += prefix;
    out += text::printable(line);
    out.erase(out.find_last_not_of(' ') + 1);
    out += '\n';
  }
  return out;
}

}  // namespace layouts
