// Reading designs and settings that were saved as JSON.
#ifndef VELTANE_CLI_SAVED_H
#define VELTANE_CLI_SAVED_H

#include <string>

#include "design.h"

namespace cli {

/**
 * Reads a design as `veltane design --format json` writes it.
 * @param file  its name; "-" for standard input
 * @return the design; its settings without the name of the dictionary, its
 *         dictionary empty where the file has none, null read as not a number
 * Raises Refusal when the file cannot be read or is no such design.
 */
Design read_saved(const std::string &file);

/**
 * Reads settings as they stand in such a design: an object with attributes as its
 * keys, with hyphens or underscores; numbers, texts, true and false, and lists of
 * these.
 * @param json  the text of the object
 * Raises Refusal when it is no such object, or an attribute comes twice.
 */
Settings read_settings(const std::string &json);

}  // namespace cli

#endif
