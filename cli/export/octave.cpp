#include <fmt/format.h>

#include "export/export.h"

namespace cli {

std::string to_octave(const Export &filter) {
  Words layout = subtracted_feedback();
  layout.emplace_back("Each row of sos: b0 b1 b2 1 a1 a2.");
  layout.emplace_back("Use: y = sosfilt(sos, x), which the signal package has; or without it:");
  layout.emplace_back(
      "     y = x; for k = 1:size(sos, 1), y = filter(sos(k, 1:3), sos(k, 4:6), y); end");
  std::string text = comment(filter, "% ", layout);
  text += fmt::format("\nsamplerate = {};\nsos = [\n", filter.samplerate);
  for (const analysis::Section &s : filter.sections)
    text += fmt::format("  {} {} {} 1 {} {}\n", double_text(s.b0), double_text(s.b1),
                        double_text(s.b2), double_text(s.a1), double_text(s.a2));
  return text + "];\n";
}

}  // namespace cli
