#include <fmt/format.h>

#include "comment.h"
#include "targets.h"
#include "text/numbers.h"

namespace layouts {
namespace {

using text::double_text;

std::string write(const ExportedFilter &filter) {
  std::vector<std::string> usage = equation(Feedback::subtracted);
  usage.emplace_back("The arguments of biquad: b0, b1, b2, 1, a1, a2.");
  usage.push_back(fmt::format("Use: include this file; then aout {} ain", filter.identifier));
  std::string file = comment(filter, "; ", usage);
  file += fmt::format("\nopcode {}, a, a\n  asignal xin\n", filter.identifier);
  for (const analysis::Section &s : filter.sections)
    file += fmt::format("  asignal biquad asignal, {}, {}, {}, 1, {}, {}\n", double_text(s.b0),
                        double_text(s.b1), double_text(s.b2), double_text(s.a1), double_text(s.a2));
  return file + "  xout asignal\nendop\n";
}

}  // namespace

constinit const Target csound_target{"csound", "a Csound opcode", Arithmetic::doubles,
                                     Form::sections, write};

}  // namespace layouts
