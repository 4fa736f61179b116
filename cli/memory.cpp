#include "memory.h"

#include <unistd.h>

#include <string_view>

#include "os/leftovers.h"
#include "output.h"

namespace cli {

void end_without_memory() noexcept {
  os::remove_leftovers();
  for (const std::string_view part : {"veltane: ", no_memory, "\n"}) write_all(STDERR_FILENO, part);
  _exit(3);
}

}  // namespace cli
