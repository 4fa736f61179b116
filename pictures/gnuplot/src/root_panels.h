// The panels of the z plane, drawn.
#ifndef GNUPLOT_ROOT_PANELS_H
#define GNUPLOT_ROOT_PANELS_H

#include "panel.h"
#include "pictures/root_panels.h"

namespace gnuplot {

void draw_roots(Script &script, const Box &box, const pictures::RootPanel &shown);

/** What the symbols are: of a single filter beside the panel's title, of several below the panel.
 *  It is drawn with the panel that comes next. */
void draw_root_key(Script &script, const Box &box, std::size_t filter_count);

}  // namespace gnuplot

#endif
