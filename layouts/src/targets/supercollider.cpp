#include <fmt/format.h>

#include "comment.h"
#include "targets.h"
#include "text/numbers.h"

namespace layouts {
namespace {

std::string write(const ExportedFilter &filter) {
  std::vector<std::string> usage = equation(Feedback::added);
  usage.emplace_back("The arguments of SOS: b0, b1, b2, -a1, -a2, which its help calls");
  usage.emplace_back("a0, a1, a2, b1, b2.");
  usage.push_back(
      fmt::format("Use: \"FILE\".load; {{ ~{}.(SoundIn.ar(0)) }}.play", filter.identifier));
  std::string file = comment(filter, "// ", usage);
  file += fmt::format("\n~{} = {{ |signal|\n", filter.identifier);
  for (const analysis::Section &section : filter.sections)
    file += fmt::format("    signal = SOS.ar(signal, {});\n",
                        coefficient_list(section, Feedback::added, text::float_text));
  return file + "    signal\n};\n";
}

}  // namespace

constinit const Target supercollider_target{
    "supercollider", "a SuperCollider function, whose server computes in floats",
    Arithmetic::floats, Form::sections, write};

}  // namespace layouts
