// An axis as a panel shows it.
#ifndef PICTURES_LABELLED_AXIS_H
#define PICTURES_LABELLED_AXIS_H

#include <string>

#include "pictures/ticks.h"

namespace pictures {

/** How many ticks there are is left to what draws the panel, which knows its size. */
struct LabelledAxis {
  Axis axis;
  TickStyle ticks;
  std::string label; /**< with the unit: "level in dB" */
};

}  // namespace pictures

#endif
