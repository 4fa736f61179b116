// What a picture says of its own making.
#ifndef VELTANE_CLI_PLOT_PROVENANCE_H
#define VELTANE_CLI_PLOT_PROVENANCE_H

#include <string>

namespace cli::plot {

/**
 * @param picture  a whole SVG or PNG file, as gnuplot writes it
 * @param command  the command line that makes it
 * @return the picture with the command as its description: the element `desc` of an SVG, a text
 *         chunk "Description" of a PNG
 */
std::string with_command(const std::string &picture, const std::string &command);

}  // namespace cli::plot

#endif
