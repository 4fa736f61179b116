// A verdict as a page to read and as JSON.
#ifndef CLI_CHECK_PAGE_H
#define CLI_CHECK_PAGE_H

#include <string>

#include "base/colour.h"
#include "base/words.h"
#include "verdict/verdict.h"

namespace cli {

/** @return the verdict, the problems and what to change, the notes, the facts.
 *  @param colour  whether problems are to catch the eye */
std::string check_page(const verdict::Verdict &verdict, Colour colour = Colour::off);

/**
 * {"veltane": version, "command": [...], "sound": true or false, "title": "...",
 * "findings": [{"about", "weight", "text", "change"}, ...], "measured": {...}}: "weight" is
 * fact, note or problem, "change" is empty if nothing needs to change. Measured values that are not
 * finite are null.
 */
std::string check_document(const verdict::Verdict &verdict, const Words &command);

}  // namespace cli

#endif
