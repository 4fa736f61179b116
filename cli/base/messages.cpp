#include "base/messages.h"

#include <unistd.h>

#include <cerrno>
#include <stdexcept>

#include "os/descriptor.h"
#include "text/printable.h"

namespace cli {

bool print(std::string_view text) {
  const int error = os::write_all(STDOUT_FILENO, text);
  if (error == EPIPE) return false;
  if (error != 0) throw std::runtime_error("cannot write to standard output");
  return true;
}

std::string as_message(const std::string &sentence) {
  return text::shortened(text::printable(sentence), 200, 300, " ... ");
}

void warn(const std::string &sentence) {
  os::write_all(STDERR_FILENO, "veltane: " + as_message(sentence) + '\n');
}

}  // namespace cli
