// Texts of others, such as names of files, made fit to be shown.
#ifndef VELTANE_CLI_PLOT_SHOWN_H
#define VELTANE_CLI_PLOT_SHOWN_H

#include <string>

namespace cli::plot {

/** @return the text in UTF-8 without control characters, which become spaces; bytes that are not
 *  UTF-8, and what XML does not allow, become U+FFFD. */
std::string shown(const std::string &text);

}  // namespace cli::plot

#endif
