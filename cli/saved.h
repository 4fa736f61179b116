// Reading designs and settings that were saved as JSON.
#ifndef VELTANE_CLI_SAVED_H
#define VELTANE_CLI_SAVED_H

#include <string>

#include "design.h"

namespace cli {

/**
 * Reads a design as `veltane design --format json` writes it.
 * @param file  its name; "-" for standard input
 * @return the design; its settings as they stand in the file, without the name of the
 *         dictionary, fit for nothing but `run_design` or `accepted`; its dictionary empty where
 *         the file has none, null read as not a number
 * Raises Refusal when the file cannot be read or is no such design.
 */
Design read_saved(const std::string &file);

/**
 * The filter of such a design under settings that the module can have: what it would not take is
 * refused, what it would change is changed, and told in the remarks.
 * @param saved  as `read_saved` returns it
 * Raises Refusal when the settings do not fit, or the dictionary belongs to another family or
 * response than they, or holds more than a filter of the highest order has.
 */
Design saved_filter(patchbay::Host &host, const std::string &file, const Design &saved);

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
