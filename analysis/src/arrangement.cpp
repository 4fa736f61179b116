#include "analysis/arrangement.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "section_order.h"
#include "zero_pairing.h"

namespace analysis {
namespace {

// How much quieter zeros with other poles have to be, as a factor of the noise's power: for less
// than a decibel a filter keeps its digits.
constexpr double worth_new_pairs = 0.8;

bool runs(const Section &s) {
  const auto finite = [](double value) { return std::isfinite(value); };
  return finite(s.b0) && finite(s.b1) && finite(s.b2) && (s.b0 != 0 || s.b1 != 0 || s.b2 != 0) &&
         std::fabs(s.a2) < 1 && std::fabs(s.a1) < 1 + s.a2;
}

/** Sections, and the order in which they are to run. */
struct Candidate {
  Sections sections;
  JudgedOrder judged;
};

Candidate ordered(Sections sections, const LevelGrid &grid) {
  std::vector<GridLevels> levels;
  for (const Section &section : sections) levels.push_back(grid.levels(section));
  JudgedOrder judged = quiet_order(spread_order(sections), levels, grid);
  return {std::move(sections), std::move(judged)};
}

// The powers of two, one for each section in its order, that bring the peak up to each section but
// the last nearest to 1, and cancel.
std::vector<int> levelling_powers(const Sections &filter, LevelGrid::Fineness fineness) {
  const LevelGrid grid(filter, fineness);
  GridLevels product(grid.size(), 0.0F);
  std::vector<int> powers;
  int before = 0;
  for (const Section &section : filter) {
    add_levels(product, grid.levels(section));
    const bool last = powers.size() + 1 == filter.size();
    const int until = last ? 0 : -static_cast<int>(std::lround(highest(product)));
    powers.push_back(until - before);
    before = until;
  }
  return powers;
}

// With its gain distributed, or as it is if that would cost a coefficient its digits.
Sections levelled(const Sections &filter, LevelGrid::Fineness fineness) {
  const std::vector<int> powers = levelling_powers(filter, fineness);
  Sections found = filter;
  for (std::size_t i = 0; i < found.size(); ++i)
    for (double *value : {&found[i].b0, &found[i].b1, &found[i].b2}) {
      if (*value == 0.0) continue;
      *value = std::ldexp(*value, powers[i]);
      if (!std::isnormal(*value)) return filter;
    }
  return found;
}

}  // namespace

Sections arranged(const Sections &filter, Structure structure) {
  if (filter.empty() || !std::all_of(filter.begin(), filter.end(), runs)) return filter;
  const LevelGrid grid(filter, LevelGrid::Fineness::coarse);
  Candidate best = ordered(filter, grid);
  if (structure == Structure::state_variable) {
    Candidate nearest = ordered(with_nearest_zeros(filter), grid);
    if (nearest.judged.noise < worth_new_pairs * best.judged.noise) best = std::move(nearest);
  }
  Sections found;
  for (const std::size_t place : best.judged.order) found.push_back(best.sections[place]);
  return levelled(found, LevelGrid::Fineness::fine);
}

Sections quickly_arranged(const Sections &filter) {
  if (!std::all_of(filter.begin(), filter.end(), runs)) return filter;
  Sections found;
  for (const std::size_t place : spread_order(filter)) found.push_back(filter[place]);
  return levelled(found, LevelGrid::Fineness::coarse);
}

}  // namespace analysis
