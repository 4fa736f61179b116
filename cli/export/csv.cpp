#include <fmt/format.h>

#include "export/export.h"

namespace cli {

std::string to_csv(const Export &filter) {
  Words layout = subtracted_feedback();
  layout.emplace_back("One section a line.");
  std::string text = comment(filter, "# ", layout) + "b0,b1,b2,a1,a2\n";
  for (const analysis::Section &s : filter.sections)
    text += fmt::format("{},{},{},{},{}\n", double_text(s.b0), double_text(s.b1), double_text(s.b2),
                        double_text(s.a1), double_text(s.a2));
  return text;
}

}  // namespace cli
