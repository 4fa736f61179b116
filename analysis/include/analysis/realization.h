/** A filter made ready to run: the structure, the order of the sections, their coefficients. */
#ifndef ANALYSIS_REALIZATION_H
#define ANALYSIS_REALIZATION_H

#include <optional>
#include <vector>

#include "analysis/filter.h"
#include "analysis/structure.h"

namespace analysis {

/** What a program needs to run a filter, and how well that goes. */
struct Realization {
  Structure structure;
  Sections sections;                /**< in the order in which they run */
  std::vector<StateVariable> forms; /**< as many, for state-variable sections; otherwise empty */
  double noise_db;                  /**< `Noise::worst_db` in the arithmetic it was made for */
};

/**
 * Sections as they stand, in a structure.
 * @param roots  that the sections were made of, for state-variable sections that keep all digits of
 *               them: a section whose roots are not among them is computed from its coefficients
 * @param arithmetic  doubles or floats
 *
 * Cost: that of `noise`.
 * Accuracy: that of `noise` and of `state_variable`.
 * @return none if state-variable sections were asked for and a section has no such form
 */
std::optional<Realization> realization(const Sections &sections, const Roots &roots,
                                       Structure structure, Arithmetic arithmetic);

/** By how many dB state-variable sections have to be quieter than direct form II transposed to be
 *  worth the half more operations that they take. Noise is predicted within 6 dB, so that less might
 *  be no gain at all. */
inline constexpr double worth_state_variable_db = 6.0;

/** @return the structure that is taken for floats, from the noise in either: state-variable sections
 *          if they are quieter by `worth_state_variable_db`. Noise may be infinite. */
Structure structure_for_floats(double direct_db, double state_variable_db);

/** A realization, and what it was preferred to. */
struct ChosenRealization {
  Realization taken;
  double direct_db;                        /**< the noise in direct form II transposed */
  std::optional<double> state_variable_db; /**< that of state-variable sections, if they were looked
                                                at and exist */
};

/**
 * A filter as it is best run in an arithmetic: arranged for the least noise (`arranged`), in direct
 * form II transposed, or for floats in state-variable sections where `structure_for_floats` says
 * so. Whoever writes a filter for use and whoever judges what is written take it from here.
 *
 * Cost: proportional to n^2; up to three times that of `noise` and of `arranged`.
 * @param roots  as above
 * @param arithmetic  doubles or floats
 */
ChosenRealization chosen_realization(const Sections &filter, const Roots &roots,
                                     Arithmetic arithmetic);

}  // namespace analysis

#endif
