#include "estimate/page.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "analysis/estimate.h"
#include "designer/command_words.h"
#include "text/json.h"

namespace cli {
namespace {

using designer::Candidate;
using designer::name_of;
using text::Json;

// "veltane", "design", ...: makes the filter.
Words command_for(const Candidate &candidate) {
  Words words{"veltane", "design"};
  for (const auto &[name, values] : candidate.settings) {
    words.push_back(designer::option_for(name));
    for (const designer::Value &value : values) words.push_back(patchbay::to_text(value));
  }
  return words;
}

std::string sentence(const TypedDemand &typed) {
  const std::vector<double> &pass = typed.passband, &stop = typed.stopband;
  const char *unit = typed.rated.units == designer::Units::hertz ? " Hz" : "";
  const auto edge = [&](double at) { return fmt::format("{}{}", at, unit); };
  using designer::Response;
  std::string where_passed, where_stopped;
  switch (typed.rated.response) {
    case Response::lowpass:
      where_passed = "up to " + edge(pass[0]);
      where_stopped = "from " + edge(stop[0]) + " on";
      break;
    case Response::highpass:
      where_passed = "from " + edge(pass[0]) + " on";
      where_stopped = "up to " + edge(stop[0]);
      break;
    case Response::bandpass:
      where_passed = "from " + edge(pass[0]) + " to " + edge(pass[1]);
      where_stopped = "up to " + edge(stop[0]) + " and from " + edge(stop[1]) + " on";
      break;
    case Response::bandstop:
      where_passed = "up to " + edge(pass[0]) + " and from " + edge(pass[1]) + " on";
      where_stopped = "from " + edge(stop[0]) + " to " + edge(stop[1]);
      break;
  }
  return fmt::format("loses at most {} dB {}, and at least {} dB {}", typed.rated.demand.ripple,
                     where_passed, typed.rated.demand.attenuation, where_stopped);
}

const char *edge_held_by(designer::Family family) {
  return analysis::held_edge(family) == analysis::Edge::passband ? "passband" : "stopband";
}

constexpr char noisy_mark[] = " *";

const char *reason_for(const Candidate &best, const std::vector<Candidate> &candidates) {
  if (best.is_noisy()) return "fewest poles, yet noisy";
  const auto possible = std::count_if(candidates.begin(), candidates.end(),
                                      [](const Candidate &one) { return one.impossible.empty(); });
  if (possible == 1) return "the only one possible";
  const bool alone = std::none_of(candidates.begin(), candidates.end(), [&](const Candidate &one) {
    return one.impossible.empty() && one.family != best.family && one.poles <= best.poles;
  });
  return alone ? "fewest poles, little noise" : "fewest poles, least noise";
}

// Which to take, and what the mark means.
std::string advice(const std::vector<Candidate> &candidates) {
  const Candidate &best = *designer::recommended(candidates);
  std::string text;
  if (candidates.size() > 1)
    text =
        fmt::format("Recommended: {} ({}).\n", name_of(best.family), reason_for(best, candidates));
  if (std::any_of(candidates.begin(), candidates.end(), [](const Candidate &candidate) {
        return candidate.impossible.empty() && candidate.is_noisy();
      }))
    text +=
        "* As published. 'veltane export' and 'veltane apply' arrange the sections, which then run "
        "quietly.\n";
  return text;
}

Json to_json(const Candidate &candidate) {
  const bool possible = candidate.impossible.empty();
  Json json{{"family", name_of(candidate.family)}, {"possible", possible}};
  if (!possible) json["reason"] = candidate.impossible;
  if (!std::isnan(candidate.exact_order)) {
    json["order"] = candidate.order;
    json["exact_order"] = candidate.exact_order;
  }
  if (!possible) return json;
  json["poles"] = candidate.poles;
  json["holds"] = edge_held_by(candidate.family);
  json["cutoffs"] = candidate.cutoffs;
  json["ripple"] = candidate.ripple;
  json["attenuation"] = candidate.attenuation;
  json["noise_db"] = candidate.noise_db;
  json["design"] = command_for(candidate);
  return json;
}

}  // namespace

std::string estimate_page(const TypedDemand &demand, const std::vector<Candidate> &candidates) {
  std::string page = fmt::format("{} at {} Hz: {}\n\n", designer::name_of(demand.rated.response),
                                 demand.rated.samplerate, sentence(demand));
  page += "family       order  poles  holds     passband loses  stopband loses  noise in doubles\n";
  std::string commands;
  for (const Candidate &candidate : candidates) {
    if (!candidate.impossible.empty()) {
      page += fmt::format("{:<11}  not possible: {}\n", name_of(candidate.family),
                          candidate.impossible);
      continue;
    }
    page += fmt::format("{:<11}  {:>5}  {:>5}  {:<8}  {:>11.4g} dB  {:>11.6g} dB  {:>13.0f} dB{}\n",
                        name_of(candidate.family), candidate.order, candidate.poles,
                        edge_held_by(candidate.family), candidate.ripple, candidate.attenuation,
                        candidate.noise_db, candidate.is_noisy() ? noisy_mark : "");
    commands += fmt::format("{}\n", fmt::join(command_for(candidate), " "));
  }
  if (commands.empty()) return page;
  page += '\n';
  if (const std::string text = advice(candidates); !text.empty()) page += text + '\n';
  return page + commands;
}

std::string estimate_document(const TypedDemand &demand, const std::vector<Candidate> &candidates,
                              const Words &command) {
  const designer::RatedDemand &rated = demand.rated;
  Json families = Json::array();
  for (const Candidate &candidate : candidates) families.push_back(to_json(candidate));
  const Candidate *best = designer::recommended(candidates);
  const Json document{{"veltane", VELTANE_VERSION},
                      {"command", command},
                      {"response", name_of(rated.response)},
                      {"units", rated.units == designer::Units::hertz ? "hertz" : "normalized"},
                      {"samplerate", rated.samplerate},
                      {"passband", demand.passband},
                      {"stopband", demand.stopband},
                      {"ripple", rated.demand.ripple},
                      {"attenuation", rated.demand.attenuation},
                      {"recommended", best != nullptr ? Json(name_of(best->family)) : Json()},
                      {"families", families}};
  return text::json_page(document);
}

}  // namespace cli
