// Drawing by gnuplot, run as a process.
#ifndef VELTANE_CLI_PLOT_GNUPLOT_H
#define VELTANE_CLI_PLOT_GNUPLOT_H

#include <cstddef>
#include <string>

namespace cli::plot {

/** What one picture may take. The largest takes a few seconds and a tenth of the rest. */
struct Limits {
  int seconds = 60;
  std::size_t memory = std::size_t{2} << 30U;   /**< bytes of address space */
  std::size_t output = std::size_t{256} << 20U; /**< bytes of the picture, or of messages */
};

/**
 * Runs gnuplot on commands and data, without the user's own start-up file. Nothing is written
 * but files that have no name and vanish with the process.
 * @param script  without `set output`, so that the picture goes to standard output
 * @return the picture
 * Raises std::runtime_error when gnuplot is missing, says what to install then, fails, or goes
 * beyond the limits. It never outlives this process.
 */
std::string draw(const std::string &script, const Limits &limits = {});

/**
 * A text as gnuplot takes it: in double quotes, with all but letters and spaces as
 * numbers, so that nothing in it is a command, a substitution or an end of the string. It is
 * changed as by `text::printable`.
 */
std::string quoted(const std::string &text);

}  // namespace cli::plot

#endif
