#include <fmt/format.h>

#include "comment.h"
#include "targets.h"
#include "text/numbers.h"

namespace layouts {
namespace {

std::string write(const ExportedFilter &filter) {
  std::vector<std::string> usage = equation(Feedback::subtracted);
  usage.emplace_back("Compile with -double: by default Faust computes in floats.");
  std::string file = comment(filter, "// ", usage);
  file += fmt::format("\nimport(\"stdfaust.lib\");\n\n{} =\n", filter.identifier);
  const char *separator = "";
  for (const analysis::Section &section : filter.sections) {
    file += fmt::format("{}    fi.tf22t({})", separator,
                        coefficient_list(section, Feedback::subtracted, text::double_text));
    separator = " :\n";
  }
  return file + fmt::format(";\n\nprocess = {};\n", filter.identifier);
}

}  // namespace

constinit const Target faust_target{"faust", "a Faust program", Arithmetic::doubles, Form::sections,
                                    write};

}  // namespace layouts
