#include <fmt/format.h>

#include "c_header.h"
#include "comment.h"
#include "targets.h"
#include "text/numbers.h"

namespace layouts {
namespace {

std::string float_literal(double value) { return text::float_text(value) + 'f'; }

std::string write(const ExportedFilter &filter) {
  const std::string &name = filter.identifier;
  const std::string guard = macro_name(name);
  std::vector<std::string> usage = equation(Feedback::added);
  usage.emplace_back("For each section (a stage there): b0, b1, b2, -a1, -a2.");
  usage.emplace_back("Use: arm_biquad_casd_df1_inst_f32 filter;");
  usage.push_back(fmt::format("     float32_t state[4 * {}_STAGES];", guard));
  usage.push_back(fmt::format("     arm_biquad_cascade_df1_init_f32(&filter, {}_STAGES,", guard));
  usage.push_back(
      fmt::format("                                     {}_coefficients, state);", name));
  usage.emplace_back("     arm_biquad_cascade_df1_f32(&filter, input, output, count);");
  std::string file = comment(filter, "// ", usage);
  file += fmt::format("\n#ifndef {0}_H\n#define {0}_H\n\n#define {0}_STAGES {1}\n", guard,
                      filter.sections.size());
  file += fmt::format("\nstatic const float {}_coefficients[5 * {}_STAGES] = {{\n", name, guard);
  const char *separator = "";
  for (const analysis::Section &section : filter.sections) {
    file += fmt::format("{}    {}", separator,
                        coefficient_list(section, Feedback::added, float_literal));
    separator = ",\n";
  }
  return file + "};\n\n#endif\n";
}

}  // namespace

constinit const Target cmsis_target{
    "cmsis",
    "a C header for CMSIS-DSP's arm_biquad_cascade_df1_f32, in floats",
    Arithmetic::floats,
    Form::sections,
    write,
    analysis::Structure::direct_1};

}  // namespace layouts
