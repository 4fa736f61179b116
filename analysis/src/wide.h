/**
 * The floating-point types that the analysis computes in where double is not enough, or not known
 * to be.
 */
#ifndef ANALYSIS_WIDE_H
#define ANALYSIS_WIDE_H

#include <array>
#include <cfloat>
#include <cstddef>
#include <type_traits>

namespace analysis {

/**
 * What is computed for each frequency and each root: long double where the processor has it, with
 * 64 bits, else double. Elsewhere long double is done by software, at a fiftieth of the speed.
 * Defining ANALYSIS_NARROW chooses double everywhere.
 */
#if LDBL_MANT_DIG == 64 && !defined(ANALYSIS_NARROW)
using Wide = long double;
#else
using Wide = double;
#endif

inline constexpr bool wide_is_double = std::is_same_v<Wide, double>;

/**
 * What is computed once for each section or coefficient and cancels: long double even where it is
 * slow, since double would lose what is looked for.
 */
using Extended = long double;

/** The sum of four doubles as if it were made exactly and rounded once, save for a last digit, also
 *  where they nearly cancel: cascaded two-sums, which need no wider type.
 *  Source: Ogita, Rump & Oishi, "Accurate Sum and Dot Product" (2005), the algorithm Sum2. */
inline double compensated_sum(const std::array<double, 4> &terms) {
  double sum = terms[0], errors = 0.0;
  for (std::size_t i = 1; i < terms.size(); ++i) {
    const double next = sum + terms[i];
    const double added = next - sum;
    errors += (sum - (next - added)) + (terms[i] - added);
    sum = next;
  }
  return sum + errors;
}

}  // namespace analysis

#endif
