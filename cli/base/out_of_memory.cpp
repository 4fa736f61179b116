#include "base/out_of_memory.h"

#include <unistd.h>

#include <string_view>

#include "os/descriptor.h"
#include "os/leftovers.h"

namespace cli {

void end_without_memory() noexcept {
  os::remove_leftovers();
  for (const std::string_view part : {"veltane: ", no_memory, "\n"})
    os::write_all(STDERR_FILENO, part);
  _exit(3);
}

}  // namespace cli
