#include <fmt/format.h>

#include "export/export.h"

namespace cli {

std::string to_supercollider(const Export &filter) {
  Words layout = added_feedback();
  layout.emplace_back("The arguments of SOS: b0, b1, b2, -a1, -a2, which its help calls");
  layout.emplace_back("a0, a1, a2, b1, b2.");
  layout.push_back(
      fmt::format("Use: \"FILE\".load; {{ ~{}.(SoundIn.ar(0)) }}.play", filter.identifier));
  std::string text = comment(filter, "// ", layout);
  text += fmt::format("\n~{} = {{ |signal|\n", filter.identifier);
  for (const analysis::Section &section : filter.sections)
    text += fmt::format("    signal = SOS.ar(signal, {});\n",
                        coefficient_list(section, float_text, true));
  return text + "    signal\n};\n";
}

}  // namespace cli
