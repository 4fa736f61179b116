// Headers for CMSIS-DSP's biquad cascades in fixed point, direct form I.

#include <fmt/format.h>

#include "analysis/fixed_point.h"
#include "c_header.h"
#include "comment.h"
#include "targets.h"

namespace layouts {
namespace {

/** What differs between the two. */
struct Width {
  analysis::Arithmetic arithmetic;
  const char *name;       // q31
  const char *type;       // of the coefficients
  const char *layout;     // of a stage's coefficients
  int coefficients;       // of a stage
  const char *separator;  // between b0 and b1
};

constexpr Width q31{analysis::Arithmetic::fixed_32, "q31", "int32_t",
                    "b0, b1, b2, -a1, -a2",         5,     ", "};
// The zero makes pairs of the others, for processors that multiply two at a time.
constexpr Width q15{analysis::Arithmetic::fixed_16, "q15", "int16_t",
                    "b0, 0, b1, b2, -a1, -a2",      6,     ", 0, "};

std::vector<std::string> usage_lines(const ExportedFilter &filter,
                                     const analysis::FixedCascade &cascade, const Width &width) {
  const std::string guard = macro_name(filter.identifier);
  std::vector<std::string> lines = equation(Feedback::added);
  lines.push_back(fmt::format("For each section (a stage there): {}, each times 2^{}.",
                              width.layout, cascade.bits - 1 - cascade.postshift));
  lines.push_back(fmt::format("Use: arm_biquad_casd_df1_inst_{} filter;", width.name));
  lines.push_back(fmt::format("     {}_t state[4 * {}_STAGES];", width.name, guard));
  lines.push_back(
      fmt::format("     arm_biquad_cascade_df1_init_{}(&filter, {}_STAGES,", width.name, guard));
  lines.push_back(
      fmt::format("         {}_coefficients, state, {}_POSTSHIFT);", filter.identifier, guard));
  lines.push_back(
      fmt::format("     arm_biquad_cascade_df1_{}(&filter, input, output, count);", width.name));
  return lines;
}

std::string header(const ExportedFilter &filter, const Width &width) {
  const analysis::FixedCascade cascade = analysis::fixed_cascade(filter.sections, width.arithmetic);
  const std::string guard = macro_name(filter.identifier);
  std::string file = comment(filter, "// ", usage_lines(filter, cascade, width));
  file += fmt::format(
      "\n#ifndef {0}_H\n#define {0}_H\n\n#include <stdint.h>\n\n"
      "#define {0}_STAGES {1}\n#define {0}_POSTSHIFT {2}\n"
      "/* Shift the output to the left by this to have the level that the comment names. */\n"
      "#define {0}_OUTPUT_SHIFT {3}\n",
      guard, cascade.sections.size(), cascade.postshift, filter.shift);
  file += fmt::format("\nstatic const {} {}_coefficients[{} * {}_STAGES] = {{\n", width.type,
                      filter.identifier, width.coefficients, guard);
  const char *separator = "";
  for (const auto &[b0, b1, b2, minus_a1, minus_a2] : cascade.sections) {
    file += fmt::format("{}    {}{}{}, {}, {}, {}", separator, b0, width.separator, b1, b2,
                        minus_a1, minus_a2);
    separator = ",\n";
  }
  return file + "};\n\n#endif\n";
}

std::string write_q31(const ExportedFilter &filter) { return header(filter, q31); }

std::string write_q15(const ExportedFilter &filter) { return header(filter, q15); }

}  // namespace

constinit const Target cmsis_q31_target{
    "cmsis-q31",
    "the same for arm_biquad_cascade_df1_q31, in fixed point of 32 bits",
    Arithmetic::fixed_32,
    Form::sections,
    write_q31,
    analysis::Structure::direct_1};

constinit const Target cmsis_q15_target{
    "cmsis-q15",
    "the same for arm_biquad_cascade_df1_q15, in fixed point of 16 bits",
    Arithmetic::fixed_16,
    Form::sections,
    write_q15,
    analysis::Structure::direct_1};

}  // namespace layouts
