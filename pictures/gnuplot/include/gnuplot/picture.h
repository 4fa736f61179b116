// A figure as a picture: where its panels lie, and the commands for gnuplot.
#ifndef GNUPLOT_PICTURE_H
#define GNUPLOT_PICTURE_H

#include <string>

#include "pictures/figure.h"

namespace gnuplot {

enum class Format { svg, png, pdf };

/** What a picture is made as. Its height follows from its width and the number of filters. */
struct PictureType {
  Format format = Format::svg;
  int width = 1000; /**< in pixels; of a PDF, 96 to the inch */
};

/** @return the commands and the data that draw a figure, all panels on one page. */
std::string script(const pictures::Figure &figure, const PictureType &type);

/**
 * @param command  the command line that makes it, which is put into the picture
 * @return the contents of a file
 * Raises as `run`. It takes about a second, most of it gnuplot's own.
 */
std::string picture(const pictures::Figure &figure, const PictureType &type,
                    const std::string &command);

}  // namespace gnuplot

#endif
