// Reading a file whole.
#ifndef CLI_BASE_INPUT_FILE_H
#define CLI_BASE_INPUT_FILE_H

#include <string>

namespace cli {

/**
 * Reads a file whole.
 * @param file  its name; "-" for standard input
 * Raises designer::Refusal when it cannot be read, is a folder, or is larger than 64 MiB.
 */
std::string read_input(const std::string &file);

}  // namespace cli

#endif
