// Curves with fewer points that look the same.
#ifndef PICTURES_THINNING_H
#define PICTURES_THINNING_H

#include "pictures/axis.h"
#include "pictures/curves.h"

namespace pictures {

/** The axes that a curve is drawn in, and their lengths in pixels. */
struct Canvas {
  Axis x, y;
  double width, height;
};

/**
 * @param curve  its x ascending
 * @return up to four points for each column of pixels: where the curve enters it, its extremes, and
 *  where it leaves; and all interruptions. What lies further outside than twice the height of the
 *  canvas, such as a level of minus infinity, is moved to there: lines to it still leave the canvas
 *  at the right place to the eye, and every number can be drawn. Of these points, those no further
 *  than a twentieth of a pixel above or below the line between their neighbours are left out: what
 *  draws it rounds places to about as much, and a level line would be drawn in steps. Time grows
 *  with the number of points.
 */
Curve thinned(const Curve &curve, const Canvas &canvas);

}  // namespace pictures

#endif
