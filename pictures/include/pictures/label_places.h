// Where the counts of multiple roots are written, so that they can be read.
#ifndef PICTURES_LABEL_PLACES_H
#define PICTURES_LABEL_PLACES_H

#include <vector>

#include "pictures/root_panels.h"

namespace pictures {

/** The lengths of what is drawn in a panel, in any one unit, such as pixels. */
struct RootPanelMeasures {
  double side;        /**< of the panel, which is square */
  double mark;        /**< across a zero or a pole */
  double digit_width; /**< of the labels' font */
  double line_height; /**< of one count; several stand one under the other */
};

/** From a label's place to the middle of its text, in the unit of the measures. */
struct LabelOffset {
  double right, up;
};

/**
 * Each label lies wholly within the panel, away from the axes' numbers, and where there is room also
 * beside all zeros and poles, other labels and the unit circle, in this order of importance. It
 * prefers to lie outward, and near.
 * Time grows with the number of labels times that of the marks.
 * @return one for each of panel.multiplicities, in their order
 */
std::vector<LabelOffset> label_offsets(const RootPanel &panel, const RootPanelMeasures &measures);

}  // namespace pictures

#endif
