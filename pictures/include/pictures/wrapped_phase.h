// A phase from -180 to 180 degrees.
#ifndef PICTURES_WRAPPED_PHASE_H
#define PICTURES_WRAPPED_PHASE_H

#include "pictures/curves.h"

namespace pictures {

/**
 * @param continuous  as `phase_curve` makes it: in degrees, NaN where it is interrupted
 * @return the same without whole turns, in (-180, 180]. Where it passes an end of that range it is
 *  drawn up to there and goes on, after an interruption, from the other end; where lies on the straight
 *  line between the points on both sides. Time grows with the number of points and of turns.
 */
Curve wrapped_phase(const Curve &continuous);

}  // namespace pictures

#endif
