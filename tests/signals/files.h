// Temporary files by their descriptors, as signals read and write them.
#ifndef TESTS_SIGNALS_FILES_H
#define TESTS_SIGNALS_FILES_H

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "designer/refusal.h"
#include "os/descriptor.h"
#include "os/temporary.h"

namespace tests {

class TemporaryFile {
 public:
  explicit TemporaryFile(std::string_view bytes = {}) : descriptor_(os::open_temporary()) {
    EXPECT_EQ(os::write_all(descriptor_, bytes), 0);
    rewind();
  }
  ~TemporaryFile() { close(descriptor_); }
  TemporaryFile(const TemporaryFile &) = delete;
  TemporaryFile &operator=(const TemporaryFile &) = delete;

  int descriptor() const { return descriptor_; }
  void rewind() const { lseek(descriptor_, 0, SEEK_SET); }

  std::string bytes() const {
    std::string bytes(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
    EXPECT_EQ(pread(descriptor_, bytes.data(), bytes.size(), 0),
              static_cast<ssize_t>(bytes.size()));
    return bytes;
  }

 private:
  int descriptor_;
};

/** @return the sentence that refuses; empty where nothing is refused. */
inline std::string refusal(const std::function<void()> &function) {
  try {
    function();
  } catch (const designer::Refusal &found) {
    return found.what();
  }
  return "";
}

}  // namespace tests

#endif
