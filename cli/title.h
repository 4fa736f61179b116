// A design in one line.
#ifndef VELTANE_CLI_TITLE_H
#define VELTANE_CLI_TITLE_H

#include <string>

#include "design.h"

namespace cli {

/** @return the settings that made it, such as "butterworth lowpass of order 4, cutoff 1000 Hz,
 *  at 48000 Hz". What a saved design does not say is left out. */
std::string title(const Design &design);

}  // namespace cli

#endif
