#include "os/path.h"

#include "wide.h"

namespace os {

std::filesystem::path path_of(const std::string &name) { return wide(name); }

std::string name_of(const std::filesystem::path &path) { return narrow(path.native()); }

}  // namespace os
