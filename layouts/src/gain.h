// Where in a cascade the gain is.
#ifndef LAYOUTS_GAIN_H
#define LAYOUTS_GAIN_H

#include "analysis/filter.h"

namespace layouts {

/**
 * Distributes the gain: the response from the input to the output of each section but the last
 * gets a peak between -3.01 and +3.01 dB. Sections are multiplied by powers of two, which rounds
 * nothing, and the whole filter stays what it was.
 */
analysis::Sections with_spread_gain(analysis::Sections sections);

}  // namespace layouts

#endif
