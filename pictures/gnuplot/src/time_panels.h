// The panels over time, drawn.
#ifndef GNUPLOT_TIME_PANELS_H
#define GNUPLOT_TIME_PANELS_H

#include "panel.h"
#include "pictures/time_panels.h"

namespace gnuplot {

void draw_over_time(Script &script, const Box &box, const pictures::TimePanel &shown);

}  // namespace gnuplot

#endif
