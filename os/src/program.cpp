#include "os/program.h"

#include <csignal>

namespace os {

std::filesystem::path program_file() { return std::filesystem::read_symlink("/proc/self/exe"); }

void prepare_streams() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace os
