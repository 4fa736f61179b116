// How gnuplot's output shows what became of it.
#ifndef GNUPLOT_ENDING_H
#define GNUPLOT_ENDING_H

#include <stdexcept>
#include <string>

#include "gnuplot/process.h"

namespace gnuplot {

/** gnuplot goes on after some errors and then ends with status 0, so the end of the picture is the
 *  evidence. */
bool is_complete(const std::string &picture);

/** @return the last line of its messages that is not blank. */
std::string last_line(const std::string &text);

/** Why gnuplot was stopped: it took longer, or its picture more bytes, than the limits allow. */
std::runtime_error too_slow(const Limits &limits);
std::runtime_error too_large(const Limits &limits);

/** What cannot be told by gnuplot, since it does not run.
 *  @param error  the system's number */
std::runtime_error not_run(int error);

enum class Ended { well, badly };

/** @return the picture that gnuplot wrote. Raises std::runtime_error, with the last of the messages,
 *  where it did not end well or the picture is not complete. */
std::string drawn(std::string picture, Ended ended, const std::string &messages);

}  // namespace gnuplot

#endif
