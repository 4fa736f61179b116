// What goes to standard output and standard error.
#ifndef CLI_BASE_MESSAGES_H
#define CLI_BASE_MESSAGES_H

#include <string>
#include <string_view>

namespace cli {

/** Writes to standard output. A reader that has gone away, as `head` does once it has seen enough,
 *  is not a failure: nothing more needs to be written.
 *  @return false when the reader has gone. Raises std::runtime_error when it cannot write. */
bool print(std::string_view text);

/** @return a sentence fit for a message, whatever was quoted in it: as by `text::printable`, with
 *          the middle of a very long one left out. */
std::string as_message(const std::string &sentence);

/** Writes "veltane: ", the sentence as by `as_message`, and a newline to standard error. */
void warn(const std::string &sentence);

}  // namespace cli

#endif
