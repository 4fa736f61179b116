#include "base/out_of_memory.h"

#include <unistd.h>

#include <string_view>

#include "os/descriptor.h"

namespace cli {

// What is half written the system removes.
void end_without_memory() noexcept {
  for (const std::string_view part : {"veltane: ", no_memory, "\n"})
    os::write_all(STDERR_FILENO, part);
  _exit(3);
}

}  // namespace cli
