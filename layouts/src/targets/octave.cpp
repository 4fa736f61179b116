#include <fmt/format.h>

#include "comment.h"
#include "targets.h"
#include "text/numbers.h"

namespace layouts {
namespace {

using text::double_text;

std::string write(const ExportedFilter &filter) {
  std::vector<std::string> usage = equation(Feedback::subtracted);
  usage.emplace_back("Each row of sos: b0 b1 b2 1 a1 a2.");
  usage.emplace_back("Use: y = sosfilt(sos, x), which the signal package has; or without it:");
  usage.emplace_back(
      "     y = x; for k = 1:size(sos, 1), y = filter(sos(k, 1:3), sos(k, 4:6), y); end");
  std::string file = comment(filter, "% ", usage);
  file += fmt::format("\nsamplerate = {};\nsos = [\n", filter.samplerate);
  for (const analysis::Section &s : filter.sections)
    file += fmt::format("  {} {} {} 1 {} {}\n", double_text(s.b0), double_text(s.b1),
                        double_text(s.b2), double_text(s.a1), double_text(s.a2));
  return file + "];\n";
}

}  // namespace

constinit const Target octave_target{"octave", "an Octave script: the matrix sos of sosfilt",
                                     Arithmetic::doubles, Form::sections, write};

}  // namespace layouts
