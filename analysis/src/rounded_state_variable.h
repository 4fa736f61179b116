/** A state-variable section, rounded. */
#ifndef ANALYSIS_ROUNDED_STATE_VARIABLE_H
#define ANALYSIS_ROUNDED_STATE_VARIABLE_H

#include "rounded_section.h"

namespace analysis {

/**
 * @param form  what the section is run as
 * @param arithmetic  doubles or floats
 */
RoundedSection rounded_state_variable(const Section &section, const StateVariable &form,
                                      Arithmetic arithmetic);

/** The same, where what is wanted is what the form computes before it is rounded. */
RoundedSection rounded_state_variable(const StateVariable &form, Arithmetic arithmetic);

}  // namespace analysis

#endif
