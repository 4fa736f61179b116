// `veltane estimate`: the least order of each family that meets a demand.

#include <algorithm>
#include <array>

#include "args/shared_options.h"
#include "args/subcommands.h"
#include "base/output_file.h"
#include "estimate/demand_options.h"
#include "estimate/page.h"

namespace cli {
namespace {

constexpr std::array options{&format_option,     &output_option, &passband_option,
                             &stopband_option,   &ripple_option, &attenuation_option,
                             &samplerate_option, &units_option,  &family_option};

constexpr std::array<std::string_view, 2> examples{
    "veltane estimate --passband 1000 --stopband 1500 --ripple 1 --attenuation 60",
    "veltane estimate --passband 300 3400 --stopband 200 4000 --ripple 0.5 --attenuation 40"};

std::string description() {
  return "Finds the least order of each family that meets a demand, designs that filter,\n"
         "and says what it reaches, with the command that makes it. One edge each for a lowpass\n"
         "or highpass, two each for a bandpass or bandstop. At the edge that a family holds, it\n"
         "loses what was asked for; what the order gives beyond that goes to the other edge. The\n"
         "exit status is 1 when no family meets the demand.";
}

int run(const Request &request) {
  const bool json = request.arguments.choice(format_option) == "json";
  const auto file = request.arguments.value(output_option);
  const TypedDemand demand = demand_in(request.arguments);
  designer::Designer designer(request.module);
  const std::vector<designer::Candidate> found =
      designer::candidates(designer, demand.rated, families_in(request.arguments));
  write_output(file, json ? estimate_document(demand, found, request.command)
                          : estimate_page(demand, found));
  const bool possible = std::any_of(found.begin(), found.end(), [](const auto &candidate) {
    return candidate.impossible.empty();
  });
  return possible ? 0 : 1;
}

}  // namespace

const Subcommand estimate_subcommand{.name = "estimate",
                                     .summary = "Finds the least order that meets a demand",
                                     .description = description,
                                     .options = options,
                                     .shared = SharedOptions::module,
                                     .examples = examples,
                                     .run = run};

}  // namespace cli
