// This program, as the system runs it.
#ifndef OS_PROGRAM_H
#define OS_PROGRAM_H

#include <filesystem>

namespace os {

/** @return the file of this program, once links are followed. Raises
 *  std::filesystem::filesystem_error where the system does not say. */
std::filesystem::path program_file();

/** To be called first: a write that fails, since its reader went away or a file may not grow, is an
 *  error that the writer sees and not the end of the program; and bytes come in and go out as they
 *  are, with no line endings changed. */
void prepare_streams();

}  // namespace os

#endif
