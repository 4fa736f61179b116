#include <fmt/format.h>

#include "comment.h"
#include "targets.h"
#include "text/numbers.h"

namespace layouts {
namespace {

using text::double_text;

std::string write(const ExportedFilter &filter) {
  std::vector<std::string> usage = equation(Feedback::subtracted);
  usage.emplace_back("One section per line.");
  std::string file = comment(filter, "# ", usage) + "b0,b1,b2,a1,a2\n";
  for (const analysis::Section &s : filter.sections)
    file += fmt::format("{},{},{},{},{}\n", double_text(s.b0), double_text(s.b1), double_text(s.b2),
                        double_text(s.a1), double_text(s.a2));
  return file;
}

}  // namespace

constinit const Target csv_target{"csv", "one section per line: b0,b1,b2,a1,a2",
                                  Arithmetic::doubles, Form::sections, write};

}  // namespace layouts
