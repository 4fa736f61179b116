/** Squared magnitudes of one section along the frequencies, and how rounding changes them. */
#ifndef ANALYSIS_SECTION_POWERS_H
#define ANALYSIS_SECTION_POWERS_H

#include <array>
#include <vector>

#include "frequency_steps.h"
#include "rounded_section.h"

namespace analysis {

struct SectionPowers {
  std::vector<double> inverse_denominator; /**< 1 / |A|^2 */
  std::vector<double> response;            /**< |N|^2 / |A|^2 */
};

/** 1 - cos(angle), or 1 + cos(angle) for a section that is turned round: the variable of its
 *  polynomials, at each step. */
const std::vector<double> &cosines(const RoundedSection &section, const FrequencySteps &steps);

/** Of the section as computed. */
SectionPowers section_powers(const RoundedSection &section, const FrequencySteps &steps);

/** |N|^2 / |A|^2 as given. */
std::vector<double> wanted_response(const RoundedSection &section, const FrequencySteps &steps);

/** The weights summed over the steps by their shares, times c^0 to c^4. */
std::array<double, 5> moments(const std::vector<double> &weights, const std::vector<double> &c,
                              const FrequencySteps &steps);

/** Errors of the response, as powers relative to that of the given sections. */
struct Deviation {
  std::vector<double> response; /**< by the rounded coefficients */
  std::vector<double> sine;     /**< in addition, by the spread of a sine */
};

/**
 * At a zero of the filter, where nothing comes out, a section adds no error.
 * Accuracy: differences are taken of the coefficients, not of the responses, so that the last digit
 * of a coefficient counts as much as it should.
 */
Deviation deviation(const std::vector<RoundedSection> &sections, const FrequencySteps &steps);

}  // namespace analysis

#endif
