#include <fmt/format.h>

#include "export/export.h"

namespace cli {

std::string to_scipy(const Export &filter) {
  Words layout = subtracted_feedback();
  layout.emplace_back("Each row of sos: b0, b1, b2, 1, a1, a2.");
  layout.emplace_back("Use: y = scipy.signal.sosfilt(sos, x)");
  std::string text = comment(filter, "# ", layout);
  text +=
      fmt::format("\nimport numpy\n\nsamplerate = {}\nsos = numpy.array([\n", filter.samplerate);
  for (const analysis::Section &s : filter.sections)
    text += fmt::format("    [{}, {}, {}, 1.0, {}, {}],\n", double_text(s.b0), double_text(s.b1),
                        double_text(s.b2), double_text(s.a1), double_text(s.a2));
  return text + "])\n";
}

}  // namespace cli
