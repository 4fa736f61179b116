#include <fmt/format.h>

#include "analysis/expansion.h"
#include "analysis/level_difference.h"
#include "analysis/schur_cohn.h"
#include "export/export.h"

namespace cli {
namespace {

// The most coefficients that an IIRFilterNode takes, according to the Web Audio text.
constexpr std::size_t most_coefficients = 20;

// What is lost when the sections become lists may not be seen in any plot.
constexpr double most_lost_db = 0.01;
constexpr double floor_db = 120.0;

constexpr char instead[] = "--for webaudio-sections writes a chain of nodes, one a section";

std::string list_text(const std::vector<double> &values) {
  std::string text;
  for (const double value : values) text += (text.empty() ? "" : ", ") + double_text(value);
  return text;
}

void check(const Export &filter, const analysis::Transfer &lists) {
  const std::size_t count = lists.denominator.size();
  if (count > most_coefficients)
    throw Refusal(
        fmt::format("an IIRFilterNode takes {} coefficients a list, and this filter with its {} "
                    "poles has {}; {}",
                    most_coefficients, count - 1, count, instead));
  const double lost = analysis::level_difference(filter.sections, lists, floor_db).db;
  if (!analysis::schur_cohn_stable(lists.denominator))
    throw Refusal(fmt::format(
        "lists of doubles for one IIRFilterNode would make this filter unstable; {}", instead));
  if (!(lost <= most_lost_db))
    throw Refusal(fmt::format(
        "lists of doubles for one IIRFilterNode would miss the response by {:.2g} dB; {}", lost,
        instead));
}

std::string context_line(const Export &filter) {
  return fmt::format("Use: const context = new AudioContext({{ sampleRate: {} }});",
                     filter.samplerate);
}

}  // namespace

std::string to_webaudio(const Export &filter) {
  const analysis::Transfer lists = analysis::expanded(filter.sections);
  check(filter, lists);
  Words layout{"H(z) = sum of feedforward[k] z^-k / sum of feedback[k] z^-k",
               "y[n] = sum of feedforward[k] x[n-k] - sum from k = 1 of feedback[k] y[n-k]",
               "The feedback terms are subtracted; feedback[0] is 1.", context_line(filter)};
  layout.push_back(
      fmt::format("     const node = new IIRFilterNode(context, {});", filter.identifier));
  return comment(filter, "// ", layout) +
         fmt::format("\nexport const {} = {{\n  feedforward: [{}],\n  feedback: [{}],\n}};\n",
                     filter.identifier, list_text(lists.numerator), list_text(lists.denominator));
}

std::string to_webaudio_sections(const Export &filter) {
  Words layout = subtracted_feedback();
  layout.emplace_back("Each section is a node with feedforward b0, b1, b2 and feedback 1, a1, a2.");
  layout.push_back(context_line(filter));
  layout.push_back(
      fmt::format("     const {{ input, output }} = {}_chain(context);", filter.identifier));
  std::string text = comment(filter, "// ", layout);
  text += fmt::format("\nexport const {} = [\n", filter.identifier);
  for (const analysis::Section &s : filter.sections)
    text += fmt::format("  {{ feedforward: [{}], feedback: [{}] }},\n",
                        list_text({s.b0, s.b1, s.b2}), list_text({1.0, s.a1, s.a2}));
  return text + fmt::format(R"(];

// Makes the nodes and connects them, the first one's output to the second one, and so on.
export function {0}_chain(context) {{
  const nodes = {0}.map((section) => new IIRFilterNode(context, section));
  nodes.reduce((before, after) => before.connect(after));
  return {{ input: nodes[0], output: nodes[nodes.length - 1] }};
}}
)",
                            filter.identifier);
}

}  // namespace cli
