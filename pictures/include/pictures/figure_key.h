// What the lines and marks of a figure stand for.
#ifndef PICTURES_FIGURE_KEY_H
#define PICTURES_FIGURE_KEY_H

#include <string>
#include <vector>

#include "pictures/drawn_filter.h"

namespace pictures {

struct FigureKey {
  std::vector<std::string> names; /**< of the filters, numbered; empty for a single one, which the
                                       title names */
  std::string cutoffs;    /**< beside a sample of the cutoffs' lines; empty if none are known */
  std::string half_power; /**< of the marks on the curves, which are different for each
                                       filter; empty if there are no marks */
  std::string
      limits; /**< beside a sample of the lines of ripple and attenuation; empty if neither was asked for */
};

FigureKey figure_key(const std::vector<DrawnFilter> &filters);

}  // namespace pictures

#endif
