// A chain of IIRFilterNodes.

#include <fmt/format.h>

#include "comment.h"
#include "javascript.h"
#include "targets.h"

namespace layouts {
namespace {

std::string write(const ExportedFilter &filter) {
  std::vector<std::string> usage = equation(Feedback::subtracted);
  usage.emplace_back("Each section is a node with feedforward b0, b1, b2 and feedback 1, a1, a2.");
  usage.push_back(audio_context_line(filter));
  usage.push_back(
      fmt::format("     const {{ input, output }} = {}_chain(context);", filter.identifier));
  std::string file = comment(filter, "// ", usage);
  file += fmt::format("\nexport const {} = [\n", filter.identifier);
  for (const analysis::Section &s : filter.sections)
    file += fmt::format("  {{ feedforward: [{}], feedback: [{}] }},\n",
                        number_list({s.b0, s.b1, s.b2}), number_list({1.0, s.a1, s.a2}));
  return file + fmt::format(R"(];

// Makes the nodes and connects them, the first one's output to the second one, and so on.
export function {0}_chain(context) {{
  const nodes = {0}.map((section) => new IIRFilterNode(context, section));
  nodes.reduce((before, after) => before.connect(after));
  return {{ input: nodes[0], output: nodes[nodes.length - 1] }};
}}
)",
                            filter.identifier);
}

}  // namespace

constinit const Target webaudio_sections_target{
    "webaudio-sections", "JavaScript for a chain of IIRFilterNodes, one per section",
    Arithmetic::doubles, Form::sections, write};

}  // namespace layouts
