// Names of files as texts.
#ifndef OS_PATH_H
#define OS_PATH_H

#include <filesystem>
#include <string>

namespace os {

/** @param name  as it was typed: in UTF-8 on Windows, the bytes themselves elsewhere */
std::filesystem::path path_of(const std::string &name);

/** @return the same back. */
std::string name_of(const std::filesystem::path &path);

}  // namespace os

#endif
