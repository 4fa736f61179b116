#include "temporary_bytes.h"

#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

#include <fmt/format.h>

#include "os/descriptor.h"
#include "os/path.h"
#include "os/temporary.h"

namespace signals {
namespace {

[[noreturn]] void fail(const char *what, int error) {
  throw std::runtime_error(fmt::format("a temporary file in '{}' cannot be {}: {}",
                                       os::name_of(os::temporary_folder()), what,
                                       std::generic_category().message(error)));
}

}  // namespace

TemporaryBytes::TemporaryBytes() : descriptor_(os::open_temporary()) {
  if (descriptor_ < 0) fail("made", errno);
}

TemporaryBytes::~TemporaryBytes() { close(descriptor_); }

void TemporaryBytes::read(std::uint64_t at, char *bytes, std::size_t size) const {
  while (size > 0) {
    const std::ptrdiff_t count = os::read_at(descriptor_, bytes, size, at);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) fail("read", count < 0 ? errno : EIO);
    bytes += count;
    size -= static_cast<std::size_t>(count);
    at += static_cast<std::uint64_t>(count);
  }
}

void TemporaryBytes::write(std::uint64_t at, const char *bytes, std::size_t size) {
  while (size > 0) {
    const std::ptrdiff_t count = os::write_at(descriptor_, bytes, size, at);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) fail("written", count < 0 ? errno : EIO);
    bytes += count;
    size -= static_cast<std::size_t>(count);
    at += static_cast<std::uint64_t>(count);
  }
}

}  // namespace signals
