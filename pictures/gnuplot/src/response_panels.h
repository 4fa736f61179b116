// The panels over frequency, drawn.
#ifndef GNUPLOT_RESPONSE_PANELS_H
#define GNUPLOT_RESPONSE_PANELS_H

#include "panel.h"
#include "pictures/response_panels.h"

namespace gnuplot {

/** How many ticks there is room for, and whether the frequencies have their numbers. */
struct AxisRoom {
  int frequency_ticks, value_ticks;
  Numbering frequencies;
};

void draw_response(Script &script, const Box &box, const pictures::ResponsePanel &shown,
                   const AxisRoom &room);

}  // namespace gnuplot

#endif
