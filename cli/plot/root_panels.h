// The panels of the z plane: the unit circle with all zeros and poles, and the poles enlarged.
#ifndef VELTANE_CLI_PLOT_ROOT_PANELS_H
#define VELTANE_CLI_PLOT_ROOT_PANELS_H

#include <vector>

#include "plot/panel.h"
#include "plot/series.h"

namespace cli::plot {

/** A square of the z plane. */
struct Square {
  analysis::Complex centre;
  double half; /**< of its side */
};

/** @return the square around the poles on and above the real axis, or mirrored to there, and the
 *  point of the unit circle that is next to one. */
Square around_poles(const std::vector<Trace> &traces);

/** All zeros and poles, with the multiplicity of those that are there several times. */
void add_circle(Script &script, const Box &box, const std::vector<Trace> &traces);

/** The poles of the upper half plane, enlarged. */
void add_poles(Script &script, const Box &box, const std::vector<Trace> &traces);

}  // namespace cli::plot

#endif
