// What a picture says of itself: its title, its making, and the size of an SVG.
#ifndef VELTANE_CLI_PLOT_PROVENANCE_H
#define VELTANE_CLI_PLOT_PROVENANCE_H

#include <string>

namespace cli::plot {

/**
 * @param picture  a whole SVG or PNG file, as gnuplot writes it
 * @param title    its title
 * @param command  the command line that makes it
 * @return the picture with both in it: the elements `title` and `desc` of an SVG, the text chunks
 *         "Title" and "Description" of a PNG. Both are changed as by `text::printable`.
 */
std::string described(const std::string &picture, const std::string &title,
                      const std::string &command);

/**
 * @param svg  a whole SVG file as gnuplot writes it
 * @return the same to be shown at another size, in pixels
 */
std::string sized(const std::string &svg, int width, int height);

}  // namespace cli::plot

#endif
