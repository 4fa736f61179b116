// How gnuplot's output shows what became of it.
#ifndef GNUPLOT_ENDING_H
#define GNUPLOT_ENDING_H

#include <string>

namespace gnuplot {

/** gnuplot goes on after some errors and then ends with status 0, so the end of the picture is the
 *  evidence. */
bool is_complete(const std::string &picture);

/** @return the last line of its messages that is not blank. */
std::string last_line(const std::string &text);

}  // namespace gnuplot

#endif
