// Names of filters and titles of figures, no longer than there is room for.
//
// All are fit to be shown, as by text::printable, and the middle of a long one is left out.
#ifndef PICTURES_FILTER_NAMES_H
#define PICTURES_FILTER_NAMES_H

#include <cstddef>
#include <string>

namespace pictures {

/** @param file_name  without its folders
 *  @param title      of the design, as designer::title has it
 *  @return the name of a saved filter: "lowpass.json: butterworth lowpass of order 4, ..." */
std::string saved_filter_name(const std::string &file_name, const std::string &title);

/** @param number  from 1
 *  @return a filter's line in the key: "2  lowpass.json: ..." */
std::string numbered_name(std::size_t number, const std::string &name);

/** @return the line over a figure. */
std::string figure_title(const std::string &text);

}  // namespace pictures

#endif
