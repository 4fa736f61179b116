/** The structures that a section can be run in, and the coefficients of the state-variable one. */
#ifndef ANALYSIS_STRUCTURE_H
#define ANALYSIS_STRUCTURE_H

#include <optional>

#include "analysis/filter.h"

namespace analysis {

/** How a section is computed; `run.h` has each as a loop. */
enum class Structure { direct_1, direct_2_transposed, state_variable };

/** What it is computed in; `fixed_point.h` says how the fixed-point ones round. */
enum class Arithmetic { doubles, floats, fixed_32, fixed_16 };

/**
 * A section as a state-variable filter with trapezoidal integrators. For each sample x:
 *   hp = h (x - r s1 - s2)
 *   t = g hp;  bp = t + s1;  s1 = bp + t
 *   u = g bp;  lp = u + s2;  s2 = lp + u
 *   y = high hp + band bp + low lp
 * and, where `mirrored`, both states change their signs after each sample, which turns the section
 * round: what would lie at z lies at -z.
 *
 * The products of its coefficients are the distances of the poles p, q from 1 and from the circle:
 * 4 g^2 h = (1 - p) (1 - q) and 2 g (r - g) h = 1 - p q. Rounding the coefficients changes these
 * distances by their last digits only, however near the poles are to z = 1; a1 and a2 lose there
 * what 1 + a1 + a2 cancels. A mirrored section has the same near z = -1.
 */
struct StateVariable {
  double g;               /**< of both integrators: tan(pi f / samplerate), at most 1 */
  double r;               /**< g + k, where k is the damping: 1/Q of a resonance */
  double h;               /**< 1 / (1 + r g) */
  double high, band, low; /**< the parts of the three outputs in y */
  bool mirrored;          /**< true where the poles are nearer to z = -1 than to z = 1 */
};

/**
 * The state-variable form of one section: the same transfer function. A first-order section is
 * given a second pole at z = 0, which a zero there cancels.
 *
 * Cost: a few square roots.
 * Accuracy: each coefficient a few units in the last place, for the given a1, a2. From those of a
 * section with poles near z = 1 or -1, that is not what was designed: 1 + a1 + a2 is known to
 * 1e-16 absolutely, and (1 - p) (1 - q) to as much. Where the roots are known, take them.
 * Source: Zavalishin, The Art of VA Filter Design, chapter 4 (the state-variable filter), with g
 * and k solved from the denominator.
 * @return none if a real pole is on the unit circle or outside, as g is real only within; none if
 *         any coefficient is not finite. A conjugate pair may be anywhere but at 1 and -1.
 */
std::optional<StateVariable> state_variable(const Section &section);

/**
 * The same from roots: at most two poles and as many zeros or fewer, in conjugate pairs or real.
 * Fewer zeros than poles begin the numerator with as many zeros.
 *
 * Accuracy: each coefficient a few units in the last place, for the given roots, wherever they are:
 * 1 + a1 + a2, 1 - a1 + a2 and 1 - a2 are products of distances.
 * Raises std::invalid_argument if there are more than two poles, or more zeros than poles.
 */
std::optional<StateVariable> state_variable(const Roots &section);

/**
 * The state-variable form of each section, from its coefficients.
 * @return as many as `filter` has, in their order; none if one section has none
 */
std::optional<std::vector<StateVariable>> state_variables(const Sections &filter);

/**
 * The state-variable form of each section, from the roots that the sections were made of. The
 * sections may be arranged and scaled. One whose roots are not among the given ones, as in a file
 * that was edited, is computed from its coefficients.
 *
 * Cost: proportional to n^2.
 * Accuracy: that of the forms from roots, or from coefficients.
 * @return as many as `filter` has, in their order; none if one section has none
 */
std::optional<std::vector<StateVariable>> state_variables(const Sections &filter,
                                                          const Roots &roots);

/**
 * The section that a state-variable form computes, whatever its coefficients were rounded to.
 * Accuracy: each coefficient to 1e-15 of the largest, so that the distances of the poles from z = 1
 * have no more digits than a1 and a2 hold.
 */
Section section_of(const StateVariable &form);

}  // namespace analysis

#endif
