// What a picture's file says of the picture: its title, the command that made it, its size.
#ifndef GNUPLOT_PICTURE_METADATA_H
#define GNUPLOT_PICTURE_METADATA_H

#include <string>

namespace gnuplot {

/** Texts of others, which are changed as by `text::printable` when they are put into a picture. */
struct Description {
  std::string title;
  std::string command; /**< the command line that makes the picture */
};

/**
 * @param picture  a whole SVG, PNG or PDF file, as gnuplot writes it
 * @return the picture with its description: the elements `title` and `desc` of an SVG, the text
 *         chunks "Title" and "Description" of a PNG, "Title" and "Subject" of a PDF. A PDF loses
 *         the time at which it was made, so that the same figure is the same file; an SVG the
 *         titles of its parts.
 */
std::string described(const std::string &picture, const Description &description);

/** In pixels. */
struct Size {
  int width, height;
};

/**
 * @param svg  a whole SVG file as gnuplot writes it
 * @return the same, to be shown at another size
 */
std::string resized(const std::string &svg, const Size &size);

}  // namespace gnuplot

#endif
