// Texts in a script.
#ifndef GNUPLOT_QUOTING_H
#define GNUPLOT_QUOTING_H

#include <string>

namespace gnuplot {

/**
 * A text as gnuplot takes it: in double quotes, with all but letters and spaces as
 * numbers, so that nothing in it is a command, a substitution or an end of the string. It is
 * changed as by `text::printable`.
 */
std::string quoted(const std::string &text);

}  // namespace gnuplot

#endif
