// One IIRFilterNode for the whole filter.

#include <fmt/format.h>

#include "analysis/expansion.h"
#include "analysis/level_difference.h"
#include "analysis/schur_cohn.h"
#include "comment.h"
#include "designer/refusal.h"
#include "javascript.h"
#include "targets.h"

namespace layouts {
namespace {

// The most coefficients that an IIRFilterNode takes, according to the Web Audio text.
constexpr std::size_t most_coefficients = 20;

// What is lost when the sections become lists must not be visible in any plot.
constexpr double most_lost_db = 0.01;
constexpr double floor_db = 120.0;

constexpr char instead[] = "--for webaudio-sections writes a chain of nodes, one per section";

void check(const ExportedFilter &filter, const analysis::Transfer &lists) {
  const std::size_t count = lists.denominator.size();
  if (count > most_coefficients)
    throw designer::Refusal(
        fmt::format("an IIRFilterNode takes {} coefficients a list, and this filter with its {} "
                    "poles has {}; {}",
                    most_coefficients, count - 1, count, instead));
  const double lost = analysis::level_difference(filter.sections, lists, floor_db).db;
  if (!analysis::schur_cohn_stable(lists.denominator))
    throw designer::Refusal(fmt::format(
        "lists of doubles for one IIRFilterNode would make this filter unstable; {}", instead));
  if (!(lost <= most_lost_db))
    throw designer::Refusal(fmt::format(
        "lists of doubles for one IIRFilterNode would miss the response by {:.2g} dB; {}", lost,
        instead));
}

std::string write(const ExportedFilter &filter) {
  const analysis::Transfer lists = analysis::expanded(filter.sections);
  check(filter, lists);
  const std::vector<std::string> usage{
      "H(z) = sum of feedforward[k] z^-k / sum of feedback[k] z^-k",
      "y[n] = sum of feedforward[k] x[n-k] - sum from k = 1 of feedback[k] y[n-k]",
      "The feedback terms are subtracted; feedback[0] is 1.", audio_context_line(filter),
      fmt::format("     const node = new IIRFilterNode(context, {});", filter.identifier)};
  return comment(filter, "// ", usage) +
         fmt::format("\nexport const {} = {{\n  feedforward: [{}],\n  feedback: [{}],\n}};\n",
                     filter.identifier, number_list(lists.numerator),
                     number_list(lists.denominator));
}

}  // namespace

constinit const Target webaudio_target{
    "webaudio", "JavaScript lists for one IIRFilterNode, which takes up to 19 poles",
    Arithmetic::doubles, Form::lists, write};

}  // namespace layouts
