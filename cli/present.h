// The forms in which a design is printed.
#ifndef VELTANE_CLI_PRESENT_H
#define VELTANE_CLI_PRESENT_H

#include <cstddef>
#include <string>
#include <vector>

#include "design.h"

namespace cli {

/** A page for reading: keys in published order, complex values as such, one
 *  section a line. Numbers read back to the same doubles. */
std::string to_text_page(const Design &design);

/**
 * {"veltane": version, "command": [...], "settings": {...}, "dictionary": {...}}:
 * settings as the box holds them, the dictionary's flat lists in published
 * order. Numbers have 17 significant digits; those that are not finite are null.
 */
std::string to_json(const Design &design, const std::vector<std::string> &command);

/**
 * {"line": number, "veltane": version, "settings": {...}, "dictionary": {...}} in one
 * line, without a newline at its end; with "remarks": [...] where there are any.
 */
std::string to_json_line(std::size_t number, const Design &design);

/** {"line": number, "error": sentence} in the same way. */
std::string error_json_line(std::size_t number, const std::string &sentence);

}  // namespace cli

#endif
