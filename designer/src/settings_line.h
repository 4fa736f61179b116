// The fast path for reading settings, which most lines of a batch take.
#ifndef DESIGNER_SETTINGS_LINE_H
#define DESIGNER_SETTINGS_LINE_H

#include <optional>
#include <string>

#include "designer/settings.h"

namespace designer {

/**
 * Reads an object of numbers, texts, true and false, and lists of these, without a tree of it.
 * @return the settings; none if the text holds anything else. The general path then says what is
 *         wrong with it.
 */
std::optional<Settings> read_settings_line(const std::string &json);

}  // namespace designer

#endif
