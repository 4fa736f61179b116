// Temporary files without a name, gone with the process however it ends.
#ifndef OS_TEMPORARY_H
#define OS_TEMPORARY_H

#include <filesystem>

namespace os {

/** @return the folder that TMPDIR names, or /tmp where it names none. */
std::filesystem::path temporary_folder();

/** @return the descriptor of a new file for reading and writing, or -1 with errno set. */
int open_temporary();

}  // namespace os

#endif
