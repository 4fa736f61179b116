// Designs and settings that were saved as JSON.
#ifndef DESIGNER_SAVED_DESIGN_H
#define DESIGNER_SAVED_DESIGN_H

#include <string>

#include "designer/designer.h"
#include "designer/published_filter.h"

namespace designer {

/** The contents of a file, not yet checked against the module. */
struct SavedDesign {
  Settings settings;               /**< without the name of the dictionary */
  patchbay::Dictionary dictionary; /**< empty if the file has none; null is not a number */
};

/**
 * Reads a design as `veltane design --format json` writes it.
 * @param json  the text of the file
 * @param what  what it is called in a sentence, such as its name in quotes
 * Raises Refusal when it is not such a design.
 */
SavedDesign parse_saved_design(const std::string &json, const std::string &what);

/**
 * The filter of a saved design, under settings that the module accepts: settings that it would
 * change are changed, and reported in the remarks.
 * @param what  as above
 * Raises Refusal when the settings do not fit, or the dictionary belongs to another family or
 * response than they, or holds more than a filter of the highest order has.
 */
Design opened(Designer &designer, const SavedDesign &saved, const std::string &what);

/**
 * The numbers of a design that was opened.
 * @param what  as above
 * Raises Refusal where `published_filter` raises std::runtime_error: what is wrong with a file is a
 * wrong request.
 */
PublishedFilter filter_in_file(const Design &opened, const std::string &what);

/**
 * Reads settings as a saved design holds them: an object with attributes as its keys, with hyphens
 * or underscores; numbers, texts, true and false, and lists of these.
 * @param json  the text of the object
 * @param what  as above
 * Raises Refusal when it is not such an object, or an attribute comes twice.
 */
Settings parse_settings(const std::string &json, const std::string &what);

}  // namespace designer

#endif
