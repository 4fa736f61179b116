// The level of each section of a filter on its own.
#ifndef PICTURES_SECTION_LEVELS_H
#define PICTURES_SECTION_LEVELS_H

#include <vector>

#include "pictures/curves.h"
#include "pictures/drawn_filter.h"

namespace pictures {

/** @return the level of each section in dB, in their order, with the points of `level_curve`; their sum
 *          is the level of the filter. Empty for a filter without sections, or a silent one. Time
 *          grows with the number of sections. */
std::vector<Curve> section_level_curves(const DrawnFilter &filter, const Axis &frequencies,
                                        Detail detail = Detail::full);

}  // namespace pictures

#endif
