// Colour on a terminal: for problems only.
#ifndef CLI_BASE_COLOUR_H
#define CLI_BASE_COLOUR_H

#include <string>

namespace cli {

enum class Colour { off, on };

/** @return on if what is written there goes to a terminal that shows colours and whose user has not
 *  asked for none: NO_COLOR is unset or empty, and TERM is not "dumb".
 *  @param descriptor  such as STDOUT_FILENO */
Colour colour_for(int descriptor);

/** @return a text that catches the eye: bold red, or as it is. */
std::string alarming(const std::string &text, Colour colour);

}  // namespace cli

#endif
