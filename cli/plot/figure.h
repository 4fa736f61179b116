// The figure of one filter or several: where its panels lie, and what gnuplot is told.
#ifndef VELTANE_CLI_PLOT_FIGURE_H
#define VELTANE_CLI_PLOT_FIGURE_H

#include <string>
#include <vector>

#include "plot/axis.h"
#include "plot/series.h"

namespace cli::plot {

enum class Format { svg, png };

/** As many filters as there are dash patterns that can be told apart. */
constexpr std::size_t most_traces = 6;

/** What a figure shows, and how. */
struct Figure {
  std::string title;
  std::vector<Trace> traces; /**< 1 to most_traces */
  Axis frequencies;          /**< of the level's panel, in Hz */
  Axis levels;               /**< of the same, in dB */
  Format format = Format::svg;
  int width = 1000; /**< in pixels */
};

/** @return the figure's height in pixels. */
int height(const Figure &figure);

/** @return the commands and the data for gnuplot. */
std::string script(const Figure &figure);

/**
 * @param command  the command line that makes it, which is put into the picture
 * @return the file's contents
 * Raises as `draw`.
 */
std::string picture(const Figure &figure, const std::string &command);

}  // namespace cli::plot

#endif
