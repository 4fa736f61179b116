/** Sections of both direct forms, rounded. */
#ifndef ANALYSIS_ROUNDED_DIRECT_FORM_H
#define ANALYSIS_ROUNDED_DIRECT_FORM_H

#include "rounded_section.h"

namespace analysis {

/** @param arithmetic  doubles or floats */
RoundedSection rounded_direct_1(const Section &section, Arithmetic arithmetic);
RoundedSection rounded_direct_2_transposed(const Section &section, Arithmetic arithmetic);

/** Direct form I in fixed point, whose coefficients have become those of `rounded`. It has one
 *  rounding, after the sum. */
RoundedSection rounded_fixed(const Section &section, const Section &rounded);

}  // namespace analysis

#endif
