// What a picture of filters draws: curves and marks, as numbers.
#ifndef VELTANE_CLI_PLOT_SERIES_H
#define VELTANE_CLI_PLOT_SERIES_H

#include <optional>
#include <string>
#include <vector>

#include "analysis/band.h"
#include "analysis/filter.h"
#include "design.h"
#include "plot/axis.h"

namespace cli::plot {

/** A filter to be drawn. Frequencies are in Hz. */
struct Trace {
  std::string name;               /**< its settings in one line */
  std::string topology;           /**< as published */
  analysis::Band band;            /**< its response */
  analysis::Sections sections;    /**< what the level is computed from; empty when not published */
  analysis::Roots roots;          /**< what everything else is computed from */
  double samplerate;              /**< in Hz */
  std::vector<double> cutoffs;    /**< ascending */
  std::vector<double> half_power; /**< where the level is 3.01 dB below the peak; those there are */
  std::optional<double> ripple;   /**< asked for, in dB */
  std::optional<double> attenuation; /**< asked for, in dB */
  double peak_db;                    /**< the highest level */
  double shift_db;     /**< what is added to the level of the sections or roots: not 0 only
                                   where it is silent */
  std::size_t outside; /**< how many poles lie outside the unit circle: none if it is stable */
  bool silent; /**< whether its gain is 0: then the level is that of its zeros and poles alone,
                    with the peak at 0 dB */
};

/** @return half the sample rate, in Hz. */
double nyquist(const Trace &trace);

/**
 * Reads a design.
 * @param name  for sentences about it, such as "the filter"
 * Raises Refusal when it holds nothing that can be drawn.
 */
Trace trace(const Design &design, const std::string &name);

/** Points to be joined; where y is not a number, the curve is interrupted. */
struct Curve {
  std::vector<double> x, y;
};

/**
 * The curves over the part of a frequency axis that lies below half the sample rate, at the
 * frequencies of analysis::grid, at those of the marks, and at even steps of the axis.
 */
Curve level_curve(const Trace &trace, const Axis &axis); /**< in dB */
Curve phase_curve(const Trace &trace, const Axis &axis); /**< in degrees, continuous; it is
                        interrupted at each zero on the unit circle */
Curve delay_curve(const Trace &trace, const Axis &axis); /**< the group delay in seconds */

/** @return the median of the group delay over a frequency axis, in seconds. */
double median_delay(const Trace &trace, const Axis &axis);

/** @return the level at a frequency, in dB, as `level_curve` has it. */
double level_at(const Trace &trace, double hz);

/** A root in the z plane, and how often it is there. */
struct RootMark {
  analysis::Complex at;
  std::size_t count;
};

/** @return the roots, equal ones (to 1e-11) as one. */
std::vector<RootMark> root_marks(const std::vector<analysis::Complex> &roots);

}  // namespace cli::plot

#endif
