// The short way to read settings, which most lines of a batch take.
#ifndef DESIGNER_SETTINGS_LINE_H
#define DESIGNER_SETTINGS_LINE_H

#include <optional>
#include <string>

#include "designer/settings.h"

namespace designer {

/**
 * Reads an object of numbers, texts, true and false, and lists of these, without a tree of it.
 * @return the settings; none where anything in the text is not as simple as that. What is wrong
 *         with it is for the long way to say.
 */
std::optional<Settings> read_settings_line(const std::string &json);

}  // namespace designer

#endif
