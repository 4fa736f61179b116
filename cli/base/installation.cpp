#include "base/installation.h"

#include "os/program.h"

namespace cli {

std::filesystem::path installation() { return os::program_file().parent_path().parent_path(); }

}  // namespace cli
