#include "analysis/realization.h"

#include <cmath>
#include <utility>

#include "analysis/arrangement.h"
#include "analysis/noise.h"

namespace analysis {

std::optional<Realization> realization(const Sections &sections, const Roots &roots,
                                       Structure structure, Arithmetic arithmetic) {
  if (structure != Structure::state_variable)
    return Realization{structure, sections, {}, noise(sections, structure, arithmetic).worst_db()};
  auto forms = state_variables(sections, roots);
  if (!forms) return std::nullopt;
  const double noise_db = noise(*forms, arithmetic).worst_db();
  return Realization{structure, sections, *std::move(forms), noise_db};
}

Structure structure_for_floats(double direct_db, double state_variable_db) {
  const bool is_worth_it =
      std::isfinite(state_variable_db) && state_variable_db <= direct_db - worth_state_variable_db;
  return is_worth_it ? Structure::state_variable : Structure::direct_2_transposed;
}

ChosenRealization chosen_realization(const Sections &filter, const Roots &roots,
                                     Arithmetic arithmetic) {
  const auto in = [&](Structure structure) {
    return realization(arranged(filter, structure), roots, structure, arithmetic);
  };
  Realization direct = in(Structure::direct_2_transposed).value();
  const double direct_db = direct.noise_db;
  if (arithmetic != Arithmetic::floats) return {std::move(direct), direct_db, std::nullopt};
  auto other = in(Structure::state_variable);
  if (!other) return {std::move(direct), direct_db, std::nullopt};
  const double other_db = other->noise_db;
  const bool is_worth_it = structure_for_floats(direct_db, other_db) == Structure::state_variable;
  return {is_worth_it ? *std::move(other) : std::move(direct), direct_db, other_db};
}

}  // namespace analysis
