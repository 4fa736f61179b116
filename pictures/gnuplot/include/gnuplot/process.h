// Running gnuplot as a process.
#ifndef GNUPLOT_PROCESS_H
#define GNUPLOT_PROCESS_H

#include <cstddef>
#include <string>

namespace gnuplot {

/** Limits for one picture. The largest takes a few seconds and a tenth of the rest. */
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
 * Raises std::runtime_error if gnuplot is missing (it says what to install), fails, or exceeds the
 * limits. It never outlives this process.
 */
std::string run(const std::string &script, const Limits &limits = {});

}  // namespace gnuplot

#endif
