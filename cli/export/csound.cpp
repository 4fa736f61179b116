#include <fmt/format.h>

#include "export/export.h"

namespace cli {

std::string to_csound(const Export &filter) {
  Words layout = subtracted_feedback();
  layout.emplace_back("The arguments of biquad: b0, b1, b2, 1, a1, a2.");
  layout.push_back(fmt::format("Use: include this file; then aout {} ain", filter.identifier));
  std::string text = comment(filter, "; ", layout);
  text += fmt::format("\nopcode {}, a, a\n  asignal xin\n", filter.identifier);
  for (const analysis::Section &s : filter.sections)
    text += fmt::format("  asignal biquad asignal, {}, {}, {}, 1, {}, {}\n", double_text(s.b0),
                        double_text(s.b1), double_text(s.b2), double_text(s.a1), double_text(s.a2));
  return text + "  xout asignal\nendop\n";
}

}  // namespace cli
