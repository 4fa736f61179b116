// `veltane estimate`: the least order of each family that meets a demand.

#include <algorithm>
#include <cmath>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "candidates.h"
#include "json_text.h"
#include "options.h"
#include "output.h"
#include "subcommands.h"

namespace cli {
namespace {

std::string to_text_page(const Requirements &requirements,
                         const std::vector<Candidate> &candidates) {
  std::string page = fmt::format("{} at {} Hz: {}\n\n", name_of(requirements.band),
                                 requirements.samplerate, to_sentence(requirements));
  page += "family       order  poles  passband loses  stopband loses\n";
  std::string commands;
  for (const Candidate &candidate : candidates) {
    if (!candidate.impossible.empty()) {
      page += fmt::format("{:<11}  not possible: {}\n", candidate.family, candidate.impossible);
      continue;
    }
    page += fmt::format("{:<11}  {:>5}  {:>5}  {:>11.4g} dB  {:>11.6g} dB\n", candidate.family,
                        candidate.order, candidate.poles, candidate.ripple, candidate.attenuation);
    commands += fmt::format("{}\n", fmt::join(candidate.command, " "));
  }
  return commands.empty() ? page : page + '\n' + commands;
}

Json to_json(const Candidate &candidate) {
  const bool possible = candidate.impossible.empty();
  Json json{{"family", candidate.family}, {"possible", possible}};
  if (!possible) json["reason"] = candidate.impossible;
  if (!std::isnan(candidate.exact_order)) {
    json["order"] = candidate.order;
    json["exact_order"] = candidate.exact_order;
  }
  if (!possible) return json;
  json["poles"] = candidate.poles;
  json["cutoffs"] = candidate.cutoffs;
  json["ripple"] = candidate.ripple;
  json["attenuation"] = candidate.attenuation;
  json["design"] = candidate.command;
  return json;
}

std::string to_json(const Requirements &requirements, const std::vector<Candidate> &candidates,
                    const Words &command) {
  Json families = Json::array();
  for (const Candidate &candidate : candidates) families.push_back(to_json(candidate));
  const Json document{{"veltane", VELTANE_VERSION},
                      {"command", command},
                      {"response", name_of(requirements.band)},
                      {"units", requirements.hertz ? "hertz" : "normalized"},
                      {"samplerate", requirements.samplerate},
                      {"passband", requirements.passband},
                      {"stopband", requirements.stopband},
                      {"ripple", requirements.demand.ripple},
                      {"attenuation", requirements.demand.attenuation},
                      {"families", families}};
  return json_page(document);
}

}  // namespace

int estimate_command(const Invocation &invocation) {
  patchbay::Host host;
  load_module(host, invocation.module);
  Options options(
      "veltane estimate",
      "Finds the least order of each family that meets a demand, designs that filter,\n"
      "and says what it reaches, with the command that makes it. One edge each for a lowpass\n"
      "or highpass, two each for a bandpass or bandstop. The exit status is 1 when no family\n"
      "can do it.",
      {"veltane estimate --passband 1000 --stopband 1500 --ripple 1 --attenuation 60",
       "veltane estimate --passband 300 3400 --stopband 200 4000 --ripple 0.5 --attenuation 40"});
  const Option &format = options.add("--format", "WORD", "How to print it: text, json [text]");
  const Option &output =
      options.add("-o,--output", "FILE", "Write it to a file, whole or not at all");
  const RequirementsOptions specified(options);
  options.add("--module", "FILE", "The module to load [the installed one]");
  options.parse(invocation.rest);

  const bool json = format.choice({"text", "json"}, "text") == "json";
  const auto file = output.value();
  const Requirements requirements = specified.requirements();
  const std::vector<Candidate> found = candidates(host, requirements);
  write_output(file, json ? to_json(requirements, found, spoken(invocation))
                          : to_text_page(requirements, found));
  return std::any_of(found.begin(), found.end(),
                     [](const Candidate &candidate) { return candidate.impossible.empty(); })
             ? 0
             : 1;
}

}  // namespace cli
