// Drawing by gnuplot, run as a process.
#ifndef VELTANE_CLI_PLOT_GNUPLOT_H
#define VELTANE_CLI_PLOT_GNUPLOT_H

#include <string>

namespace cli::plot {

/**
 * Runs gnuplot on commands and data, without the user's own start-up file. Nothing is written
 * but files that have no name and vanish with the process.
 * @param script  without `set output`, so that the picture goes to standard output
 * @return the picture
 * Raises std::runtime_error when gnuplot is missing, says what to install then, or fails.
 */
std::string draw(const std::string &script);

/**
 * A text as gnuplot takes it: in double quotes, with all but letters and spaces as
 * numbers, so that nothing in it is a command, a substitution or an end of the string. It is
 * changed as by `shown`.
 */
std::string quoted(const std::string &text);

}  // namespace cli::plot

#endif
