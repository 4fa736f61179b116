// What the panels of the z plane show.
#ifndef PICTURES_ROOT_PANELS_H
#define PICTURES_ROOT_PANELS_H

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "pictures/curves.h"
#include "pictures/drawn_filter.h"
#include "pictures/labelled_axis.h"

namespace pictures {

/** The roots of one filter within a panel, equal ones once. */
struct ShownRoots {
  Curve zeros, poles;
};

/** The multiplicities of roots that lie at one place to the eye. */
struct MultiplicityLabel {
  double x, y;                  /**< the place */
  analysis::Complex outward;    /**< the direction, of length 1, away from the circle's centre */
  std::set<std::size_t> counts; /**< of zeros and poles of all filters there, 2 or more each */
};

/** All numbers are in the units of its axes, which are equally long. */
struct RootPanel {
  std::string title;
  LabelledAxis real, imaginary;
  analysis::Complex origin; /**< the point of the plane that is 0 on both axes */
  double unit = 1.0;        /**< how long 1 is on the axes */
  Curve unit_circle;
  Curve frame;                     /**< around what the other panel enlarges; empty in that one */
  std::vector<ShownRoots> filters; /**< as many as were given, in their order */
  std::vector<MultiplicityLabel> multiplicities;
};

/** @return the unit circle with all zeros and poles, and a frame around what `poles_panel` shows. A
 *  frame that would be too small to be seen is drawn larger. */
RootPanel zeros_and_poles_panel(const std::vector<DrawnFilter> &filters);

/** @return the poles of `around_poles`, enlarged; the title says whether these are all of the upper
 *  half plane. */
RootPanel poles_panel(const std::vector<DrawnFilter> &filters);

}  // namespace pictures

#endif
