#include <fmt/format.h>

#include "export/export.h"

namespace cli {

std::string to_faust(const Export &filter) {
  Words layout = subtracted_feedback();
  layout.emplace_back("Compile with -double: by default Faust computes in floats.");
  std::string text = comment(filter, "// ", layout);
  text += fmt::format("\nimport(\"stdfaust.lib\");\n\n{} =\n", filter.identifier);
  const char *separator = "";
  for (const analysis::Section &section : filter.sections) {
    text +=
        fmt::format("{}    fi.tf22t({})", separator, coefficient_list(section, double_text, false));
    separator = " :\n";
  }
  return text + fmt::format(";\n\nprocess = {};\n", filter.identifier);
}

}  // namespace cli
