#include "os/path.h"

namespace os {

std::filesystem::path path_of(const std::string &name) { return name; }

std::string name_of(const std::filesystem::path &path) { return path.string(); }

}  // namespace os
