// A design in one line.
#ifndef DESIGNER_TITLE_H
#define DESIGNER_TITLE_H

#include <string>

#include "designer/designer.h"

namespace designer {

/** @return the settings that made it, such as "butterworth lowpass of order 4, cutoff 1000 Hz,
 *  at 48000 Hz". */
std::string title(const Design &design);

}  // namespace designer

#endif
