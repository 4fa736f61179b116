// A design as JSON, as it is saved and opened again.
#ifndef LAYOUTS_DOCUMENT_H
#define LAYOUTS_DOCUMENT_H

#include <cstddef>
#include <string>
#include <vector>

#include "designer/designer.h"

namespace layouts {

/**
 * {"veltane": version, "command": [...], "settings": {...}, "dictionary": {...}}:
 * settings as the box holds them, the dictionary's flat lists in published
 * order. Numbers have 17 significant digits; those that are not finite are null.
 */
std::string design_document(const designer::Design &design,
                            const std::vector<std::string> &command);

/**
 * {"line": number, "veltane": version, "settings": {...}, "dictionary": {...}} in one
 * line, without a newline at its end; with "remarks": [...] where there are any.
 */
std::string design_line(std::size_t number, const designer::Design &design);

/** {"order": ..., ...}: settings alone in the same way, as designer::parse_settings reads them. */
std::string settings_line(const designer::Settings &settings);

/** {"line": number, "error": sentence} in the same way. */
std::string error_line(std::size_t number, const std::string &sentence);

}  // namespace layouts

#endif
