#include "memory.h"

#include <unistd.h>

#include <string_view>

#include "leftovers.h"
#include "output.h"

namespace cli {

void end_without_memory() noexcept {
  remove_leftovers();
  for (const std::string_view part : {"veltane: ", no_memory, "\n"}) write_all(STDERR_FILENO, part);
  _exit(3);
}

}  // namespace cli
