#include <fmt/format.h>

#include "export/export.h"

namespace cli {
namespace {

std::string float_literal(double value) { return float_text(value) + 'f'; }

}  // namespace

std::string to_cmsis(const Export &filter) {
  const std::string &name = filter.identifier;
  const std::string guard = upper_case(name);
  Words layout = added_feedback();
  layout.emplace_back("Of each section, which is a stage there: b0, b1, b2, -a1, -a2.");
  layout.emplace_back("Use: arm_biquad_casd_df1_inst_f32 filter;");
  layout.push_back(fmt::format("     float32_t state[4 * {}_STAGES];", guard));
  layout.push_back(fmt::format("     arm_biquad_cascade_df1_init_f32(&filter, {}_STAGES,", guard));
  layout.push_back(
      fmt::format("                                     {}_coefficients, state);", name));
  layout.emplace_back("     arm_biquad_cascade_df1_f32(&filter, input, output, count);");
  std::string text = comment(filter, "// ", layout);
  text += fmt::format("\n#ifndef {0}_H\n#define {0}_H\n\n#define {0}_STAGES {1}\n", guard,
                      filter.sections.size());
  text += fmt::format("\nstatic const float {}_coefficients[5 * {}_STAGES] = {{\n", name, guard);
  const char *separator = "";
  for (const analysis::Section &section : filter.sections) {
    text += fmt::format("{}    {}", separator, coefficient_list(section, float_literal, true));
    separator = ",\n";
  }
  return text + "};\n\n#endif\n";
}

}  // namespace cli
