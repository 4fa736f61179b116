#include "structure.h"

#include <cmath>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "analysis/arrangement.h"
#include "analysis/cascade_gain.h"
#include "designer/limits.h"
#include "designer/refusal.h"

namespace layouts {
namespace {

using analysis::ChosenRealization;
using analysis::Realization;
using analysis::Sections;
using analysis::Structure;

analysis::Arithmetic arithmetic_of(const Target &target) {
  return target.arithmetic == Arithmetic::floats ? analysis::Arithmetic::floats
                                                 : analysis::Arithmetic::doubles;
}

std::string arrangement_sentence(const Request &request) {
  if (request.source == Source::elsewhere)
    return "Sections: arranged for the least rounding noise, and the gain spread over them.";
  switch (request.arrangement) {
    case Arrangement::quiet: break;
    case Arrangement::published:
      return "Sections: in the order in which the module publishes them, all of the gain in the "
             "first one (--as-published; --spread-gain is off).";
    case Arrangement::published_spread:
      return "Sections: in the order in which the module publishes them, the gain spread by powers "
             "of two, so that the output of each but the last peaks between -3.01 and +3.01 dB "
             "(--as-published --spread-gain).";
  }
  return "Sections: arranged for the least rounding noise, and the gain spread over them; the "
         "module publishes another order (--as-published keeps it).";
}

Sections in_arrangement(const Sections &sections, Arrangement arrangement, Structure structure) {
  switch (arrangement) {
    case Arrangement::quiet: return analysis::arranged(sections, structure);
    case Arrangement::published: return sections;
    case Arrangement::published_spread: return analysis::with_gain_spread(sections);
  }
  throw std::invalid_argument("no such arrangement");
}

Realization realized(const ScaledFilter &filter, Structure structure, Arrangement arrangement,
                     analysis::Arithmetic arithmetic) {
  auto found = analysis::realization(in_arrangement(filter.sections, arrangement, structure),
                                     filter.roots, structure, arithmetic);
  if (!found)
    throw designer::Refusal(
        "state-variable sections cannot be made of this filter, as a real pole of it is not inside "
        "the unit circle; another --structure may be");
  return *std::move(found);
}

// Why floats have this structure.
std::string reason_for(const ChosenRealization &chosen) {
  if (!chosen.state_variable_db) return "";
  const double gained = chosen.direct_db - *chosen.state_variable_db;
  if (chosen.taken.structure == Structure::state_variable)
    return std::isinf(gained)
               ? ", since direct form II transposed would be unstable or overflow"
               : fmt::format(", since direct form II transposed would make {:.0f} dB more noise",
                             gained);
  if (gained >= 0.5)
    return fmt::format(", as state-variable sections would make only {:.0f} dB less noise", gained);
  return ", as state-variable sections would make no less noise";
}

StructuredFilter chosen_structure(const ScaledFilter &filter, const Target &target,
                                  const Request &request) {
  ChosenRealization chosen =
      analysis::chosen_realization(filter.sections, filter.roots, arithmetic_of(target));
  const std::string structure = fmt::format("Structure: {}{} (--structure takes another).",
                                            name_of(chosen.taken.structure), reason_for(chosen));
  return {std::move(chosen.taken), {arrangement_sentence(request), structure}};
}

}  // namespace

std::string name_of(Structure structure) {
  switch (structure) {
    case Structure::direct_1: return "direct form I";
    case Structure::direct_2_transposed: return "direct form II transposed";
    case Structure::state_variable: return "state-variable sections";
  }
  throw std::invalid_argument("no such structure");
}

StructuredFilter in_structure(const ScaledFilter &filter, const Target &target,
                              const Request &request) {
  if (!target.structure && !request.structure && request.arrangement == Arrangement::quiet)
    return chosen_structure(filter, target, request);
  const Structure structure =
      request.structure.value_or(target.structure.value_or(Structure::direct_2_transposed));
  StructuredFilter found{realized(filter, structure, request.arrangement, arithmetic_of(target)),
                         {arrangement_sentence(request)}};
  if (!target.structure)
    found.sentences.push_back(
        fmt::format("Structure: {} ({}).", name_of(structure),
                    request.structure ? "--structure" : "--structure takes another"));
  return found;
}

std::string way_to_less_noise(const ScaledFilter &filter, const Target &target,
                              const Request &request) {
  const auto is_quiet = [](double noise_db) { return noise_db <= designer::most_float_noise_db; };
  const bool arranges = request.arrangement == Arrangement::quiet;
  const std::optional<Structure> own = request.structure ? request.structure : target.structure;
  if (!arranges && own &&
      is_quiet(realized(filter, *own, Arrangement::quiet, analysis::Arithmetic::floats).noise_db))
    return "leave out --as-published";
  const Realization best =
      analysis::chosen_realization(filter.sections, filter.roots, analysis::Arithmetic::floats)
          .taken;
  if (!is_quiet(best.noise_db))
    return "take a target with doubles, such as c, or several filters of a lower order in a row";
  if (target.structure)
    return fmt::format("take a target with doubles, such as c, or c-float, where it runs in {}",
                       name_of(best.structure));
  if (arranges) return "leave out --structure";
  return request.structure ? "leave out --structure and --as-published"
                           : "leave out --as-published";
}

}  // namespace layouts
