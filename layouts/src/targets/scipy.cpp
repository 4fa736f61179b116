#include <fmt/format.h>

#include "comment.h"
#include "targets.h"
#include "text/numbers.h"

namespace layouts {
namespace {

using text::double_text;

std::string write(const ExportedFilter &filter) {
  std::vector<std::string> usage = equation(Feedback::subtracted);
  usage.emplace_back("Each row of sos: b0, b1, b2, 1, a1, a2.");
  usage.emplace_back("Use: y = scipy.signal.sosfilt(sos, x)");
  std::string file = comment(filter, "# ", usage);
  file +=
      fmt::format("\nimport numpy\n\nsamplerate = {}\nsos = numpy.array([\n", filter.samplerate);
  for (const analysis::Section &s : filter.sections)
    file += fmt::format("    [{}, {}, {}, 1.0, {}, {}],\n", double_text(s.b0), double_text(s.b1),
                        double_text(s.b2), double_text(s.a1), double_text(s.a2));
  return file + "])\n";
}

}  // namespace

constinit const Target scipy_target{"scipy", "Python source: the array sos of scipy.signal.sosfilt",
                                    Arithmetic::doubles, Form::sections, write};

}  // namespace layouts
