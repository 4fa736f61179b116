#include "os/descriptor.h"

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>

namespace os {

int open_to_read(const std::string &file) { return open(file.c_str(), O_RDONLY | O_CLOEXEC); }

std::ptrdiff_t read_some(int descriptor, char *bytes, std::size_t size) {
  ssize_t count = -1;
  do count = ::read(descriptor, bytes, size);
  while (count < 0 && errno == EINTR);
  return count;
}

int write_all(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return written < 0 ? errno : EIO;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

std::ptrdiff_t read_at(int descriptor, char *bytes, std::size_t size, std::uint64_t at) {
  return pread(descriptor, bytes, size, static_cast<off_t>(at));
}

std::ptrdiff_t write_at(int descriptor, const char *bytes, std::size_t size, std::uint64_t at) {
  return pwrite(descriptor, bytes, size, static_cast<off_t>(at));
}

}  // namespace os
