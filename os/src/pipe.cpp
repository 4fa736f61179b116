#include "os/pipe.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace os {

// Through a copy: there is no way to look into a pipe itself.
std::string waiting_bytes(int descriptor, std::size_t most) {
  std::array<int, 2> copy{};
  if (pipe2(copy.data(), O_CLOEXEC) != 0) return {};
  pollfd arrival{descriptor, POLLIN, 0};
  while (poll(&arrival, 1, -1) < 0 && errno == EINTR) {
  }
  std::string bytes(most, '\0');
  const ssize_t there = tee(descriptor, copy[1], bytes.size(), 0);
  const ssize_t count = there > 0 ? read(copy[0], bytes.data(), bytes.size()) : 0;
  bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  for (const int end : copy) close(end);
  return bytes;
}

}  // namespace os
