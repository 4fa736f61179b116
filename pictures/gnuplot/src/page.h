// Where everything lies on the page, in pixels from its upper left corner, at a width of 1000.
#ifndef GNUPLOT_PAGE_H
#define GNUPLOT_PAGE_H

#include "pictures/figure.h"

namespace gnuplot {

struct PageSize {
  double width, height;
};

struct Place {
  double left, top;
};

struct Box {
  double left, top, right, bottom;
};

/** The page of one figure. The key is higher the more names it holds; all below it moves. */
struct Page {
  PageSize size;
  Place title; /**< the left end and the middle of its height */
  Place key;   /**< likewise, of its first row */
  Box level, passband, phase, delay;
  Box zeros_and_poles, poles;
  Box impulse, step;
};

/** From one row of the key to the next. */
inline constexpr double key_row = 20;

/** @return whether the passband and the phase below it share one axis, which has its numbers at the
 *  delay alone. */
bool has_one_axis_for_details(const pictures::Figure &figure);

Page page_for(const pictures::Figure &figure);

}  // namespace gnuplot

#endif
