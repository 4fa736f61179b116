#include "base/installation.h"

namespace cli {

std::filesystem::path installation() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path().parent_path();
}

}  // namespace cli
