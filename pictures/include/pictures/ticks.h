// The ticks of an axis, and how its numbers are written.
#ifndef PICTURES_TICKS_H
#define PICTURES_TICKS_H

#include <string>
#include <vector>

#include "pictures/axis.h"

namespace pictures {

/** A place on an axis; without a label it is a small tick. */
struct Tick {
  double at;
  std::string label;
};

/** Where ticks lie, and how they are labelled. */
enum class TickStyle {
  decimal,   /**< multiples of 1, 2 or 5 times a power of ten */
  degrees,   /**< multiples of a step that divides a turn or is made of whole turns */
  magnitudes /**< as decimal, with k for thousands and M for millions; on a logarithmic axis longer
                  than a decade, powers of ten and their multiples. For frequencies and delays */
};

/**
 * @param most  how many labels there is room for
 * @return ticks within the axis, ascending, at most `most` + 1 of them, not counting the small
 *  ticks of a logarithmic axis; none if the axis has no length or an end that is not finite.
 *  Negative numbers carry U+2212, the minus sign that typographers use.
 */
std::vector<Tick> ticks(const Axis &axis, TickStyle style, int most);

}  // namespace pictures

#endif
